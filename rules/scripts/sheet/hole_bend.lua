-- A hole beside a bend becomes an oval.
local sheet = dfm.sheet()
local holes = part.holes()
for _, one in ipairs(sheet.holes) do
    local bend = sheet.bends[one.bend]
    if bend then
        dfm.at_least {
            value = one.bend_distance, limit = params.factor * sheet.thickness + bend.inner_radius, unit = "mm",
            what = "from a hole to a bend", at = {faces = holes[one.hole].faces}, label = "near a bend",
        }
    end
end
