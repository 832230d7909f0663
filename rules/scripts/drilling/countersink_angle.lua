-- Countersinks are bought in few angles.
dfm.sound()
local function isCommon(angle)
    for _, known in ipairs(params.angles) do
        if math.abs(angle - known) <= params.tolerance then return true end
    end
    return false
end

for _, hole in ipairs(part.holes()) do
    if hole.countersink_angle and not isCommon(hole.countersink_angle) then
        result.finding {
            message = string.format("a countersink of %s, which no standard tool has", dfm.text(hole.countersink_angle, "deg")),
            measured = hole.countersink_angle, unit = "deg", at = {faces = hole.faces, label = "countersink angle"},
        }
    end
end
