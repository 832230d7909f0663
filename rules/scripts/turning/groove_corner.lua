-- The nose of an insert is round.
local turned = dfm.turned()
for _, groove in ipairs(turned.grooves) do
    dfm.at_least {
        value = groove.corner_radius or 0, limit = params.limit, unit = "mm",
        what = string.format("the corner radius of a groove of %s", dfm.text(groove.width, "mm")),
        at = {faces = groove.faces}, label = "groove corner",
    }
end
