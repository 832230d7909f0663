-- A hole beside a bend becomes an oval. The distance is that to the beginning of the bend: from the inside of a flange at
-- right angles, it is larger by the radius.
local sheet = dfm.sheet()
local holes = part.holes()
for _, one in ipairs(sheet.holes) do
    if one.bend then
        dfm.at_least {
            value = one.bend_distance, limit = params.factor * sheet.thickness, unit = "mm",
            what = "from a hole to a bend", at = {faces = holes[one.hole].faces}, label = "near a bend",
        }
    end
end
