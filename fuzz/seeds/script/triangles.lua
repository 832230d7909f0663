-- Finer meshes slow the slicer down and print no better.
local limit = 500000

local count = mesh.part():triangles()
return count <= limit, string.format("the mesh has %d triangles, %d are enough", count, limit)
