-- A drill is at least as long as its hole is deep, and must fit before the mouth.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    dfm.at_least {
        value = hole.free_length and hole.free_length / hole.depth, limit = params.limit,
        what = string.format("free length to depth before a hole of %s", dfm.text(hole.diameter, "mm")),
        at = {point = hole.entry}, label = "no access",
    }
end
