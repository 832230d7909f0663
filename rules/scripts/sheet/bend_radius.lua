-- The outside of a tight bend cracks. The rule database knows the least radius of many materials.
local sheet = dfm.sheet()
local least, why = params.factor * sheet.thickness, "for this thickness"
if part.material then
    local row = db.bend_radius(part.material, sheet.thickness, params.direction)
    if row then least, why = row.radius, "for " .. part.material end
end
for _, bend in ipairs(sheet.bends) do
    if not bend.closed then
        dfm.at_least {
            value = bend.inner_radius, limit = least, unit = "mm", what = "the inner radius of a bend", why = why,
            at = {faces = bend.faces}, label = "tight bend",
        }
    end
end
