-- A full spool of PLA has 1000 g, of which a tenth is lost to supports.
local density = 1.24 -- g/cm3
local limit = 900 -- g

local volume = mesh.part():volume() -- mm3; nil for an open surface
if not volume then
    return false, "an open surface encloses no volume"
end
local mass = math.abs(volume) / 1000 * density -- facets that point inward give a negative volume
if mass > limit then
    return false, string.format("the part takes %.0f g of filament, a spool gives %d g", mass, limit)
end
