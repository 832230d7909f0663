-- The corner of the cutter makes the rounding at the floor.
dfm.sound()
for _, pocket in ipairs(part.pockets()) do
    local radius, isCommon = pocket.floor_radius, false
    for _, known in ipairs(params.radii) do
        isCommon = isCommon or (radius and math.abs(radius - known) <= params.tolerance)
    end
    if radius and not isCommon then
        result.finding {
            message = string.format("the rounding at the floor of a pocket has %s, which no common cutter has",
                dfm.text(radius, "mm")),
            measured = radius, unit = "mm", at = {faces = pocket.faces, label = "floor radius"},
        }
    end
end
