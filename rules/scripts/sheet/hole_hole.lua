-- A narrow web between holes tears.
local sheet = dfm.sheet()
for _, hole in ipairs(part.holes()) do
    if hole.hole_distance and hole.number < hole.nearest_hole then
        dfm.at_least {
            value = hole.hole_distance, limit = params.factor * sheet.thickness, unit = "mm",
            what = "from a hole to the next one", at = {faces = hole.faces}, label = "narrow web",
        }
    end
end
