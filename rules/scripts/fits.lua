-- The part fits into the working space of the machine, in whatever direction.
local space = {params.length, params.width, params.height}
table.sort(space, function(a, b) return a > b end)
local box = part.box()
local sizes = part.smallest_box().sizes
for i, side in ipairs({"longest", "middle", "shortest"}) do
    dfm.at_most {
        value = sizes[i], limit = space[i], unit = "mm", what = "the part's " .. side .. " side",
        at = {box = {box.least, box.greatest}}, label = "the whole part",
    }
end
