-- The draft that a wall needs grows less than its depth: in inches, the root of the depth over a constant.
dfm.sound()
local INCH = 25.4
local ALIKE = 0.05 -- degrees
local draft = part.draft({pull = params.pull})
local pull = draft.pull
local wallOf = {}
for _, wall in ipairs(draft.faces) do wallOf[wall.face] = wall end
local find, join = dfm.groups()

-- A rounding leans at its end as the wall that it continues: both are one wall, and as deep.
for _, edge in ipairs(part.edges()) do
    local a, b = wallOf[edge.faces[1]], wallOf[edge.faces[2]]
    if edge.convexity == "smooth" and a and b and a.half == b.half and math.abs(a.angle - b.angle) < ALIKE then
        join(a.face, b.face)
    end
end

local least, greatest = {}, {}
for _, wall in ipairs(draft.faces) do
    local name = find(wall.face)
    for _, loop in ipairs(part.face(wall.face).edges) do
        for _, edge in ipairs(loop) do
            for _, point in ipairs(part.edge(edge).points) do
                local height = point.x * pull.x + point.y * pull.y + point.z * pull.z
                least[name] = math.min(least[name] or height, height)
                greatest[name] = math.max(greatest[name] or height, height)
            end
        end
    end
end

for _, wall in ipairs(draft.faces) do
    local name = find(wall.face)
    local depth = ((greatest[name] or 0) - (least[name] or 0)) / INCH
    if not wall.undercut and wall.half ~= "both" and depth > 0 then
        dfm.at_least {
            value = wall.angle, limit = math.deg(math.atan(math.sqrt(depth) / params.constant, depth)), unit = "deg",
            what = "the draft of a wall", why = string.format("for a depth of %s", dfm.text(depth * INCH, "mm")),
            at = {faces = {wall.face}}, label = "little draft",
        }
    end
end
