-- A hole that is tapped holds the screw.
dfm.sound()
for _, tapped in ipairs(dfm.tapped(params.by_diameter)) do
    dfm.at_least {
        value = tapped.hole.bore_depth / tapped.diameter, limit = params.limit,
        what = "depth to nominal diameter of a hole for " .. tapped.designation,
        at = {faces = tapped.hole.faces}, label = "short thread",
    }
end
