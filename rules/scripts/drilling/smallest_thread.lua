-- Small taps break.
dfm.sound()
for _, tapped in ipairs(dfm.tapped(params.by_diameter)) do
    dfm.at_least {
        value = tapped.diameter, limit = params.limit, unit = "mm",
        what = "the nominal diameter of " .. tapped.designation .. " in a hole of " .. dfm.text(tapped.hole.diameter, "mm"),
        at = {faces = tapped.hole.faces}, label = "small thread",
    }
end
