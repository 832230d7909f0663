-- ABS does not fill thinner walls.
local thinnest = 1.5 -- mm

local wall = mesh.part():min_wall() -- nil when the part has no two sides
if wall and wall < thinnest then
    return false, string.format("the thinnest wall is about %.2f mm, ABS needs %.2f mm", wall, thinnest)
end
