-- ABS does not fill thinner walls.
local thinnest = 1.5 -- mm

local wall = mesh.part():min_wall() -- nil when no facet has another side behind it
if not wall then
    return false, "the part has no wall to measure"
end
if wall < thinnest then
    return false, string.format("the thinnest wall is about %.2f mm, ABS needs %.2f mm", wall, thinnest)
end
