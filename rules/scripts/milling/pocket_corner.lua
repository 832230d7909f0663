-- The smallest corner of a pocket says how thin the cutter must be, its depth how long.
dfm.sound()
for _, pocket in ipairs(part.pockets()) do
    if pocket.corner_radius and not pocket.sharp_corner then
        dfm.at_least {
            value = pocket.corner_radius, limit = params.limit * pocket.depth, unit = "mm",
            what = "a corner radius in a pocket", why = string.format("for a depth of %s", dfm.text(pocket.depth, "mm")),
            at = {faces = pocket.faces}, label = "tight corner",
        }
    end
end
