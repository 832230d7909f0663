-- Countersinks are bought in few angles.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if hole.countersink_angle and not dfm.is_near(hole.countersink_angle, params.angles, params.tolerance) then
        result.finding {
            message = string.format("a countersink of %s, which no standard tool has", dfm.text(hole.countersink_angle, "deg")),
            measured = hole.countersink_angle, unit = "deg", at = {faces = hole.faces, label = "countersink angle"},
        }
    end
end
