-- A short flange slips into the die.
local sheet = dfm.sheet()
for _, bend in ipairs(sheet.bends) do
    if not bend.closed then
        dfm.at_least {
            value = bend.flange_length, limit = params.factor * sheet.thickness + bend.inner_radius, unit = "mm",
            what = "the length of a flange", at = {faces = bend.faces}, label = "short flange",
        }
    end
end
