-- A boring bar is thinner than its bore and clamped outside it.
local turned = dfm.turned()
local PARALLEL = 0.9999
for _, hole in ipairs(part.holes()) do
    local axis = turned.axis
    local cosine = hole.axis.x * axis.x + hole.axis.y * axis.y + hole.axis.z * axis.z
    -- The distance of the mouth from the axis of turning.
    local x, y, z = hole.entry.x - turned.origin.x, hole.entry.y - turned.origin.y, hole.entry.z - turned.origin.z
    local along = x * axis.x + y * axis.y + z * axis.z
    local square = x * x + y * y + z * z - along * along
    if math.abs(cosine) > PARALLEL and square < 1e-4 then
        dfm.at_most {
            value = hole.depth / hole.diameter, limit = params.limit,
            what = string.format("depth to diameter of a bore of %s", dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces}, label = "deep bore",
        }
    end
end
