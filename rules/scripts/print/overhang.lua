-- Each layer lies on the one below.
dfm.sound()
for _, overhang in ipairs(part.overhangs({up = params.up, angle = params.limit})) do
    if overhang.kind ~= "bridge" then
        result.finding {
            message = string.format("an overhang (%s) of %s from the horizontal, at least %s prints without support",
                overhang.kind, dfm.text(overhang.angle, "deg"), dfm.text(params.limit, "deg")),
            measured = overhang.angle, limit = params.limit, unit = "deg",
            at = {faces = overhang.faces, label = "overhang"},
        }
    end
end
