-- What has one thickness can be cut and bent from sheet.
dfm.sound()
local sheet = part.sheet()
if not sheet.is then
    local box = part.box()
    result.finding {message = "this is no sheet: " .. sheet.reason, at = {box = {box.least, box.greatest}, label = "the whole part"}}
end
