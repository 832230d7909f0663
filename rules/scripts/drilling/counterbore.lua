-- The head of a cap screw fits into its counterbore.
dfm.sound()
local function threadOf(bore)
    for i, nominal in ipairs(params.nominal) do
        for _, fit in ipairs({"fine", "medium", "coarse"}) do
            local row = db.clearance_hole(nominal, fit)
            if row and dfm.same(row.diameter, bore) then return nominal, params.diameter[i] end
        end
    end
end

for _, hole in ipairs(part.holes()) do
    local nominal, limit = threadOf(hole.diameter)
    if hole.counterbore_diameter and hole.bottom == "through" and limit then
        dfm.at_least {
            value = hole.counterbore_diameter, limit = limit, unit = "mm",
            what = string.format("the counterbore over a clearance hole for M%g", nominal),
            at = {faces = hole.faces}, label = "narrow counterbore",
        }
    end
end
