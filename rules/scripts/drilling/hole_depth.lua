-- A twist drill must be able to clear its chips.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if not hole.taper_angle then
        dfm.at_most {
            value = hole.bore_depth / hole.diameter, limit = params.limit,
            what = string.format("depth to diameter of a hole of %s", dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces}, label = "deep hole",
        }
    end
end
