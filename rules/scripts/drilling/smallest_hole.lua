-- A hole must not be too small for the process.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    dfm.at_least {
        value = hole.diameter, limit = params.limit, unit = "mm", what = "the diameter of a hole",
        at = {faces = hole.faces}, label = "small hole",
    }
end
