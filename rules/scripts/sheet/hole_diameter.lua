-- A punch that is thinner than the sheet breaks.
local sheet = dfm.sheet()
for _, hole in ipairs(part.holes()) do
    dfm.at_least {
        value = hole.diameter, limit = params.factor * sheet.thickness, unit = "mm", what = "the diameter of a hole",
        at = {faces = hole.faces}, label = "small hole",
    }
end
