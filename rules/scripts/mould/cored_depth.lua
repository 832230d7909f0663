-- A core is a pin that the metal shrinks onto.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    local limit
    for i, diameter in ipairs(params.diameter) do
        if hole.diameter >= diameter - 1e-3 then limit = params.depth[i] end
    end
    if limit then
        dfm.at_most {
            value = hole.depth, limit = limit, unit = "mm",
            what = string.format("the depth of a cored hole of %s", dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces}, label = "deep core",
        }
    end
end
