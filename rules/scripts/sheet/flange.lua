-- A short flange slips into the die. Its height inside begins at the inner side of the sheet that it stands on.
local sheet = dfm.sheet()
for _, bend in ipairs(sheet.bends) do
    if bend.flange_length and not bend.closed then
        local outside = sheet.thickness * math.tan(math.rad(math.min(bend.angle, 90)) / 2)
        dfm.at_least {
            value = bend.flange_length - outside, limit = params.factor * sheet.thickness + bend.inner_radius, unit = "mm",
            what = "the inside height of a flange", at = {faces = bend.faces}, label = "short flange",
        }
    end
end
