-- A long, thin cutter bends and chatters.
dfm.sound()
for _, pocket in ipairs(part.pockets()) do
    if pocket.width then
        dfm.at_most {
            value = pocket.depth / pocket.width, limit = params.limit,
            what = string.format("depth to width of a pocket of %s", dfm.text(pocket.width, "mm")),
            at = {faces = pocket.faces}, label = "deep pocket",
        }
    end
end
