-- A blind hole that is tapped holds the screw.
dfm.sound()
for _, hole in ipairs(params.by_diameter and part.holes() or {}) do
    if hole.tap_drill_for and hole.bottom ~= "through" then
        local thread = assert(db.thread(hole.tap_drill_for))
        dfm.at_least {
            value = hole.bore_depth / thread.nominal, limit = params.limit,
            what = "depth to nominal diameter of a hole for " .. thread.designation,
            at = {faces = hole.faces}, label = "short thread",
        }
    end
end
