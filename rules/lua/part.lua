---@meta
-- The engine `part`, for the Lua language server. docs/part-engine.md is the reference.
-- Lengths are in mm, angles in degrees; a field that does not apply is nil.

---@class Box
---@field least Point
---@field greatest Point
---@field size Point

---@class OrientedBox
---@field centre Point
---@field axes Point[] three directions at right angles
---@field sizes number[] along the axes, the longest first

---@class Solid
---@field number integer
---@field name? string
---@field place? string the assemblies that hold it
---@field volume number mm3
---@field area number mm2
---@field centre Point

---@class Face
---@field number integer
---@field solid integer 0 in an open shape
---@field kind "plane"|"cylinder"|"cone"|"sphere"|"torus"|"other"
---@field concave boolean a curved face with its material outside, such as the wall of a hole
---@field area number mm2
---@field point Point on the face
---@field normal Point out of the material, at that point
---@field edges integer[][] its borders, the outer one first
---@field origin? Point
---@field axis? Point
---@field radius? number
---@field minor_radius? number of a torus
---@field half_angle? number of a cone
---@field turn? number degrees around the axis

---@class Edge
---@field number integer
---@field kind "line"|"circle"|"ellipse"|"other"
---@field convexity "convex"|"concave"|"smooth"|"open"|"seam"
---@field angle number between the outward normals of its faces
---@field length number
---@field points Point[]
---@field faces integer[]
---@field radius? number of a circle
---@field centre? Point
---@field axis? Point

---@class Damage
---@field kind "open edge"|"invalid face"|"not solid"|"many-fold"|"size"
---@field message string
---@field points Point[]
---@field faces integer[]

---@class Thickness two opposite places of a wall, or of the air between two walls
---@field value number
---@field point Point
---@field opposite Point
---@field faces integer[] that the two are on

---@class Walls
---@field thinnest? Thickness by the largest sphere inside the material that touches the surface there
---@field thinnest_by_ray? Thickness by the straight line through the material, square to the surface
---@field thickest? Thickness by sphere
---@field typical? number half of the surface has thinner walls, half thicker ones
---@field places Thickness[] the thinnest place of each face by sphere, thinnest first
---@field places_by_ray Thickness[] the same by ray

part = {}

---@type string? path of the part's file
part.path = nil
---@type string?
part.name = nil
---@type string? as in the rule database
part.material = nil

---The smallest box along the axes.
---@return Box
function part.box() end
---@return number x, number y, number z
function part.size() end
---The box of least volume in any direction.
---@return OrientedBox
function part.smallest_box() end
---@return number mm3
function part.volume() end
---@return number mm2
function part.area() end
---@return Point centre of mass
function part.centre() end
---@param density number kg/m3
---@return number kg
function part.mass(density) end
---True for a part that was read from facets.
---@return boolean
function part.is_mesh() end
---@return string? the file's unit of length
function part.units() end
---@return Solid[]
function part.solids() end
---@return Face[]
function part.faces() end
---@return Edge[]
function part.edges() end
---@param number integer
---@return Face
function part.face(number) end
---@param number integer
---@return Edge
function part.edge(number) end
---What keeps the part from being a valid closed solid.
---@return Damage[]
function part.damages() end
---How thick the walls are. An error for a part that is not closed.
---@return Walls
function part.walls() end
