-- A drill jumps where it crosses another hole, and leaves a burr inside.
dfm.sound()
local PARALLEL = 0.999 -- cosine: below it, axes cross
local NEAR = 1e-3      -- mm, and the cosine of what counts as a right angle
local WIDE = 2         -- a bore of so many diameters is as good as a flat wall to a drill that meets it on its radius
local holes, holeOf = part.holes(), {}
for _, hole in ipairs(holes) do
    for _, face in ipairs(hole.faces) do holeOf[face] = hole end
end

local function dot(a, b) return a.x * b.x + a.y * b.y + a.z * b.z end

local function isMetOnRadius(a, b)
    local between = {x = a.entry.x - b.entry.x, y = a.entry.y - b.entry.y, z = a.entry.z - b.entry.z}
    local common = {x = a.axis.y * b.axis.z - a.axis.z * b.axis.y, y = a.axis.z * b.axis.x - a.axis.x * b.axis.z,
        z = a.axis.x * b.axis.y - a.axis.y * b.axis.x}
    local isWide = math.max(a.diameter, b.diameter) >= WIDE * math.min(a.diameter, b.diameter)
    return isWide and math.abs(dot(a.axis, b.axis)) < NEAR and math.abs(dot(between, common)) < NEAR
end

local told = {}
for _, edge in ipairs(part.edges()) do
    local a, b = holeOf[edge.faces[1]], holeOf[edge.faces[2]]
    if a and b and a.number ~= b.number then
        local first, second = math.min(a.number, b.number), math.max(a.number, b.number)
        local pair = first .. " " .. second
        if math.abs(dot(a.axis, b.axis)) < PARALLEL and not isMetOnRadius(a, b) and not told[pair] then
            told[pair] = true
            result.finding {
                message = string.format("holes of %s and %s run into each other", dfm.text(a.diameter, "mm"),
                    dfm.text(b.diameter, "mm")),
                at = {polyline = edge.points, label = "crossing holes"},
            }
        end
    end
end
