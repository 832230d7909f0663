-- The draft that a wall needs grows less than its depth: in inches, the root of the depth over a constant.
dfm.sound()
local INCH = 25.4
local draft = part.draft({pull = params.pull})
local pull = draft.pull

local function depthOf(face)
    local least, greatest = math.huge, -math.huge
    for _, loop in ipairs(part.face(face).edges) do
        for _, edge in ipairs(loop) do
            for _, point in ipairs(part.edge(edge).points) do
                local height = point.x * pull.x + point.y * pull.y + point.z * pull.z
                least, greatest = math.min(least, height), math.max(greatest, height)
            end
        end
    end
    return greatest - least
end

for _, wall in ipairs(draft.faces) do
    local depth = depthOf(wall.face) / INCH
    if not wall.undercut and wall.half ~= "both" and depth > 0 then
        dfm.at_least {
            value = wall.angle, limit = math.deg(math.atan(math.sqrt(depth) / params.constant, depth)), unit = "deg",
            what = "the draft of a wall", why = string.format("for a depth of %s", dfm.text(depth * INCH, "mm")),
            at = {faces = {wall.face}}, label = "little draft",
        }
    end
end
