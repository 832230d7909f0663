-- No rotating cutter makes a sharp corner between walls.
dfm.sound()
for _, corner in ipairs(part.corners()) do
    if corner.pocket_wall then
        result.finding {
            message = string.format("the walls of a pocket meet in a sharp corner over %s", dfm.text(corner.length, "mm")),
            at = {polyline = part.edge(corner.edge).points, label = "sharp corner"},
        }
    end
end
