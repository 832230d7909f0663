-- The bottom of a blind hole is the cone of a drill that the shop has.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if hole.bottom == "conical" and not dfm.is_near(hole.bottom_angle, params.angles, params.tolerance) then
        result.finding {
            message = string.format("the bottom of a hole of %s has a cone of %s, which no common drill has",
                dfm.text(hole.diameter, "mm"), dfm.text(hole.bottom_angle, "deg")),
            measured = hole.bottom_angle, unit = "deg", at = {faces = hole.faces, label = "point angle"},
        }
    end
end
