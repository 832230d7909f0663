-- Walls must be thick enough for how the part is made. The rule's parameters say how thick, and what needs it.
local wall, sides = mesh.part():thinnest() -- nil when no facet has another side behind it
if not wall then
    error("the part has no wall to measure")
end
if wall < params.limit then
    return false, {
        message = string.format("the thinnest wall is about %.2f mm, %s needs %.2f mm",
            wall, params.needed_by, params.limit),
        measured = wall, limit = params.limit, unit = "mm",
        at = {polyline = sides, label = "thinnest wall"},
    }
end
