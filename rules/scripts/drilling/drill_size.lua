-- Holes have the diameter of a drill that can be bought.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if not hole.taper_angle and hole.diameter <= params.largest then
        local drill = assert(db.nearest_drill(hole.diameter))
        if math.abs(drill.diameter - hole.diameter) > params.tolerance then
            result.finding {
                message = string.format("no drill has %.3f mm, the nearest has %g mm", hole.diameter, drill.diameter),
                measured = hole.diameter, limit = drill.diameter, unit = "mm",
                at = {faces = hole.faces, label = "no standard drill"},
            }
        end
    end
end
