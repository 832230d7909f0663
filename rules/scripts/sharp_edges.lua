-- Inner corners of moulded and cast parts are rounded.
dfm.sound()
for _, edge in ipairs(part.edges()) do
    if edge.convexity == "concave" and edge.length >= params.least_length and edge.angle >= params.least_angle then
        result.finding {
            message = string.format("an inner corner of %s over %s is sharp", dfm.text(180 - edge.angle, "deg"),
                dfm.text(edge.length, "mm")),
            at = {polyline = edge.points, label = "sharp inner corner"},
        }
    end
end
