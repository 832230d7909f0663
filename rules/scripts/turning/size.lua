-- The part fits into the lathe.
dfm.sound()
local turned = part.turned()
if not turned.is then error("this is no turned part: " .. turned.reason, 0) end
local box = part.box()
local at = {box = {box.least, box.greatest}}
dfm.at_most {value = turned.diameter, limit = params.diameter, unit = "mm", what = "the part's diameter", at = at}
dfm.at_most {value = turned.length, limit = params.length, unit = "mm", what = "the part's length", at = at}
