-- A chamfer is cheaper to mill than a rounding, unless an end mill goes around it.
dfm.sound()
local ALONG = 0.999 -- cosine of what counts as parallel
local box = part.smallest_box()
local up = box.axes[3] -- along the thickness
for _, fillet in ipairs(part.fillets()) do
    local axis = fillet.axis
    local cosine = axis and math.abs(axis.x * up.x + axis.y * up.y + axis.z * up.z) or 0
    if not fillet.concave and fillet.length >= params.least_length and cosine < ALONG then
        result.finding {
            message = string.format("an outer edge is rounded with %s over %s; a chamfer is cheaper to mill",
                dfm.text(fillet.radius, "mm"), dfm.text(fillet.length, "mm")),
            at = {faces = fillet.faces, label = "rounded outer edge"},
        }
    end
end
