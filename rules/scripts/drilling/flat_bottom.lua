-- A drill leaves a cone at the bottom.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if hole.bottom == "flat" and not hole.taper_angle and hole.diameter <= params.largest then
        result.finding {
            message = string.format("a blind hole of %s has a flat bottom", dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces, label = "flat bottom"},
        }
    end
end
