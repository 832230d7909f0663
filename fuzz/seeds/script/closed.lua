-- An open surface has no inside that could be filled.
if not mesh.part():closed() then
    return false, "the surface has holes or facets that are turned around"
end
