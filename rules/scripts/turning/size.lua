-- The part fits into the lathe.
local turned = dfm.turned()
local box = part.box()
local at = {box = {box.least, box.greatest}}
dfm.at_most {value = turned.diameter, limit = params.diameter, unit = "mm", what = "the part's diameter", at = at}
dfm.at_most {value = turned.length, limit = params.length, unit = "mm", what = "the part's length", at = at}
