-- A narrow slot takes a narrow punch.
local sheet = dfm.sheet()
local isHole = dfm.hole_faces()
for _, gap in ipairs(dfm.pairs_once(part.gaps().places)) do
    local a, b = gap.faces[1], gap.faces[2]
    if a ~= b and not isHole[a] and not isHole[b] then
        dfm.at_least {
            value = gap.value, limit = params.factor * sheet.thickness, unit = "mm", what = "the width of a slot",
            at = dfm.line(gap.point, gap.opposite), label = "narrow slot",
        }
    end
end
