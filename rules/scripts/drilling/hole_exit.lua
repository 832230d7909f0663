-- A drill that comes through on one side first grabs.
dfm.sound()
local NEAR = 1e-3 -- mm, and the cosine of what counts as a right angle

local function dot(a, b) return a.x * b.x + a.y * b.y + a.z * b.z end
local function cross(a, b)
    return {x = a.y * b.z - a.z * b.y, y = a.z * b.x - a.x * b.z, z = a.x * b.y - a.y * b.x}
end
local function minus(a, b) return {x = a.x - b.x, y = a.y - b.y, z = a.z - b.z} end

-- A face that is round about the hole's axis, or about one that the hole's axis meets at a right angle.
local function isMetOnRadius(face, hole)
    if face.kind == "sphere" then
        local off = cross(minus(face.origin, hole.entry), hole.axis)
        return dot(off, off) < NEAR * NEAR
    end
    return face.kind == "cylinder" and math.abs(dot(face.axis, hole.axis)) < NEAR
        and math.abs(dot(minus(face.origin, hole.entry), cross(hole.axis, face.axis))) < NEAR
end

local function endsOnRadius(hole)
    local own, ends = {}, 0
    for _, face in ipairs(hole.faces) do own[face] = true end
    for _, face in ipairs(hole.faces) do
        for _, loop in ipairs(part.face(face).edges) do
            for _, number in ipairs(loop) do
                local edge = part.edge(number)
                local other = edge.faces[1] == face and edge.faces[2] or edge.faces[1]
                local isExit = dot(minus(edge.points[1], hole.entry), hole.axis) > hole.depth / 2
                if isExit and not own[other] then
                    if not isMetOnRadius(part.face(other), hole) then return false end
                    ends = ends + 1
                end
            end
        end
    end
    return ends > 0
end

for _, hole in ipairs(part.holes()) do
    if hole.bottom == "through" and not hole.square_exit and not endsOnRadius(hole) then
        result.finding {
            message = string.format("a hole of %s comes out of a face that is not at right angles to it",
                dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces, label = "inclined exit"},
        }
    end
end
