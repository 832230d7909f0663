-- A layer over air hangs from its ends.
dfm.sound()
local FLAT = 1 -- degrees from the horizontal
for _, overhang in ipairs(part.overhangs({up = params.up, angle = FLAT})) do
    dfm.at_most {
        value = overhang.kind == "bridge" and overhang.span or nil, limit = params.limit, unit = "mm", what = "the span of a ceiling",
        at = {faces = overhang.faces}, label = "long bridge",
    }
end
