-- A narrow rim tears.
local sheet = dfm.sheet()
local holes = part.holes()
for _, one in ipairs(sheet.holes) do
    dfm.at_least {
        value = one.edge_distance, limit = params.factor * sheet.thickness, unit = "mm",
        what = "from a hole to the edge of the sheet", at = {faces = holes[one.hole].faces}, label = "near the edge",
    }
end
