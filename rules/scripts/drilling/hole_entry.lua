-- A drill slides off a slope.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if not hole.square_entry then
        dfm.at_most {
            value = hole.entry_angle, limit = params.limit, unit = "deg", what = "the slope that a hole begins in",
            at = {point = hole.entry}, label = "inclined entry",
        }
    end
end
