-- The bottom of a blind hole is the cone of a drill that the shop has.
dfm.sound()
local function isCommon(angle)
    for _, known in ipairs(params.angles) do
        if math.abs(angle - known) <= params.tolerance then return true end
    end
    return false
end

for _, hole in ipairs(part.holes()) do
    if hole.bottom == "conical" and not isCommon(hole.bottom_angle) then
        result.finding {
            message = string.format("the bottom of a hole of %s has a cone of %s, which no common drill has",
                dfm.text(hole.diameter, "mm"), dfm.text(hole.bottom_angle, "deg")),
            measured = hole.bottom_angle, unit = "deg", at = {faces = hole.faces, label = "point angle"},
        }
    end
end
