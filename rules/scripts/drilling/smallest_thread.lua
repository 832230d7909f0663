-- Small taps break.
dfm.sound()
for _, hole in ipairs(params.by_diameter and part.holes() or {}) do
    if hole.tap_drill_for and hole.bottom ~= "through" then
        local thread = assert(db.thread(hole.tap_drill_for))
        dfm.at_least {
            value = thread.nominal, limit = params.limit, unit = "mm",
            what = "the nominal diameter of a thread in a hole of " .. dfm.text(hole.diameter, "mm"),
            at = {faces = hole.faces}, label = "small thread",
        }
    end
end
