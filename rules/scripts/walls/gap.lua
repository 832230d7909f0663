-- Air between two walls is wide enough for the process. Holes, which have one wall around, are not meant.
dfm.sound()
local isHole = dfm.hole_faces()
for _, gap in ipairs(dfm.pairs_once(part.gaps().places)) do
    local a, b = gap.faces[1], gap.faces[2]
    if a ~= b and not (isHole[a] and isHole[b]) then
        dfm.at_least {
            value = gap.value, limit = params.limit, unit = "mm", what = "a gap", at = dfm.line(gap.point, gap.opposite),
            label = "narrow gap",
        }
    end
end
