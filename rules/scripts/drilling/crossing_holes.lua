-- A drill jumps where it crosses another hole, and leaves a burr inside.
dfm.sound()
local PARALLEL = 0.999 -- cosine: below it, axes cross
local holes, holeOf = part.holes(), {}
for _, hole in ipairs(holes) do
    for _, face in ipairs(hole.faces) do holeOf[face] = hole end
end

local told = {}
for _, edge in ipairs(part.edges()) do
    local a, b = holeOf[edge.faces[1]], holeOf[edge.faces[2]]
    if a and b and a.number ~= b.number then
        local first, second = math.min(a.number, b.number), math.max(a.number, b.number)
        local cosine = a.axis.x * b.axis.x + a.axis.y * b.axis.y + a.axis.z * b.axis.z
        local pair = first .. " " .. second
        if math.abs(cosine) < PARALLEL and not told[pair] then
            told[pair] = true
            result.finding {
                message = string.format("holes of %s and %s run into each other", dfm.text(a.diameter, "mm"),
                    dfm.text(b.diameter, "mm")),
                at = {polyline = edge.points, label = "crossing holes"},
            }
        end
    end
end
