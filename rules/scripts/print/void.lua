-- What fills a closed hollow stays in it. Faces that no chain of edges joins to the others of their solid enclose one.
dfm.sound()
local find, join = dfm.groups()
local faces = part.faces()
for _, edge in ipairs(part.edges()) do
    if #edge.faces == 2 then join(edge.faces[1], edge.faces[2]) end
end

-- The shell that reaches farthest along x is the outer one.
local shells, outer = {}, {}
for _, face in ipairs(faces) do
    local name = find(face.number)
    local shell = shells[name] or {faces = {}, reach = -math.huge, solid = face.solid}
    shells[name] = shell
    shell.faces[#shell.faces + 1] = face.number
    shell.reach = math.max(shell.reach, face.point.x)
    for _, loop in ipairs(face.edges) do
        for _, edge in ipairs(loop) do
            for _, point in ipairs(part.edge(edge).points) do shell.reach = math.max(shell.reach, point.x) end
        end
    end
    local best = outer[face.solid]
    if not best or shell.reach > best.reach then outer[face.solid] = shell end
end
for _, face in ipairs(faces) do
    local shell = shells[find(face.number)]
    if shell ~= outer[face.solid] and shell.faces[1] == face.number then
        result.finding {message = "a closed hollow inside the part has no way out", at = {faces = shell.faces, label = "closed hollow"}}
    end
end
