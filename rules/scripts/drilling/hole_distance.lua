-- The material beside a hole is thick enough to hold while the hole is made.
dfm.sound()
local WHAT = {
    edge_distance = "from a hole to the border of its face",
    wall_distance = "from a hole to another face",
    hole_distance = "from a hole to the next one",
}
local what = WHAT[params.measure] or error("the parameter measure is none of the distances of a hole")
local limit, why = dfm.thinnest("machining")
for _, hole in ipairs(part.holes()) do
    local distance = hole[params.measure]
    -- Of two holes the first one tells.
    if params.measure ~= "hole_distance" or (distance and hole.number < hole.nearest_hole) then
        dfm.at_least {
            value = distance, limit = limit, unit = "mm", what = what, why = why,
            at = {faces = hole.faces}, label = "thin material",
        }
    end
end
