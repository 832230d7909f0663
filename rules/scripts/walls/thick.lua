-- The middle of a thick wall stays hot.
dfm.sound()
local box = part.box()
dfm.at_most {
    value = part.walls().typical, limit = params.limit, unit = "mm", what = "the typical wall",
    at = {box = {box.least, box.greatest}}, label = "thick walls",
}
