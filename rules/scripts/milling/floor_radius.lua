-- The corner of the cutter makes the rounding at the floor.
dfm.sound()
for _, pocket in ipairs(part.pockets()) do
    local radius = pocket.floor_radius
    if radius and not dfm.is_near(radius, params.radii, params.tolerance) then
        result.finding {
            message = string.format("the rounding at the floor of a pocket has %s, which no common cutter has",
                dfm.text(radius, "mm")),
            measured = radius, unit = "mm", at = {faces = pocket.faces, label = "floor radius"},
        }
    end
end
