-- The outside of a tight bend cracks. The rule database knows the least radius of many materials.
local sheet = dfm.sheet()

--- Whether the database has radii for thinner sheets of the material alone. A thick sheet needs more thicknesses than a
--- thin one, so the factor would let too much pass.
local function only_thinner(material)
    for tenths = 9, 1, -1 do
        if db.bend_radius(material, sheet.thickness * tenths / 10, params.direction) then return true end
    end
    return false
end

local least, why = params.factor * sheet.thickness, "for this thickness"
local material = #sheet.bends > 0 and part.material
if material then
    local row = db.bend_radius(material, sheet.thickness, params.direction)
    if row then
        least, why = row.radius, "for " .. material
    elseif only_thinner(material) then
        error(("no bend radius of %s is known for a sheet of %.2f mm"):format(material, sheet.thickness), 0)
    end
end
for _, bend in ipairs(sheet.bends) do
    if not bend.closed then
        dfm.at_least {
            value = bend.inner_radius, limit = least, unit = "mm", what = "the inner radius of a bend", why = why,
            at = {faces = bend.faces}, label = "tight bend",
        }
    end
end
