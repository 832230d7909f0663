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
---@field kind "open edge"|"invalid face"|"not solid"|"many-fold"|"size"|"missing"
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
---@field places Thickness[] the thinnest place of each face by sphere, and up to seven more with thicker walls between them; thinnest first
---@field places_by_ray Thickness[] the same by ray

---@class HoleSection one step of a hole around its axis
---@field kind "cylinder"|"cone"|"sphere"|"rounding"
---@field start number below the mouth
---@field length number
---@field start_diameter number
---@field end_diameter number 0 at a tip
---@field angle? number whole angle of a cone
---@field turn number degrees around the axis
---@field faces integer[]

---@class Hole
---@field number integer from 1; holes()[number] is this hole
---@field solid integer
---@field entry Point centre of the mouth
---@field axis Point into the material
---@field diameter number of the main bore, below counterbore and countersink
---@field depth number from the mouth to the end of the full diameter, the tip excluded
---@field bore_depth number of the main bore alone
---@field bottom "through"|"flat"|"conical"|"round"|"other"
---@field bottom_angle? number whole angle of a conical bottom
---@field bottom_radius? number
---@field counterbore_diameter? number
---@field counterbore_depth? number
---@field countersink_diameter? number
---@field countersink_angle? number whole angle
---@field taper_angle? number whole angle of a conical bore
---@field square_entry boolean the face around the mouth is flat and at right angles
---@field square_exit boolean the same of the other end of a through hole
---@field entry_angle number between the axis and the normal of the entry face
---@field turn number degrees around the axis; below 360 where a side opens it
---@field edge_distance? number to the border of the entry face
---@field wall_distance? number to the nearest other face
---@field hole_distance? number to the nearest hole that does not cross it
---@field nearest_hole? integer
---@field free_length? number before the mouth; nil: for ever
---@field entry_face? integer
---@field pattern? integer
---@field aligned integer[] holes of the same diameter on the same axis
---@field thread? integer place in threads() of the thread that the file gives it
---@field tap_drill_for? string coarse thread whose tap drill has this diameter: a hint
---@field sections HoleSection[]
---@field faces integer[]

---@class PartThread a thread that the file tells of
---@field designation string "M6x1-6H", "1/4-20 UNC-2B", "G1/2"
---@field diameter number nominal
---@field pitch? number
---@field source "property"|"dimension"|"annotation"|"aspect"|"face" where the file tells of it
---@field text string what the file says there
---@field faces integer[]

---@class HolePattern
---@field number integer
---@field kind "row"|"circle"|"grid"|"group"
---@field diameter number of its holes
---@field pitch? number
---@field second_pitch? number of a grid
---@field circle_diameter? number
---@field holes integer[]

---@class Fillet a rounding, freeform ones among them
---@field radius number the smallest one
---@field largest_radius number equal to it unless the radius changes along the rounding
---@field concave boolean in an inner corner
---@field point Point
---@field axis? Point of a straight one
---@field length number
---@field faces integer[]

---@class SharpCorner an edge in an inner corner without a rounding
---@field edge integer
---@field point Point
---@field direction? Point of a straight one
---@field length number
---@field angle number between the faces through the air
---@field pocket_wall boolean between two walls of a pocket

---@class Pocket
---@field number integer
---@field solid integer
---@field floor? integer face; nil for a through pocket
---@field point Point
---@field axis Point into the material
---@field depth number to the top of the lowest wall
---@field tallest_wall number
---@field width? number the smallest distance between facing walls
---@field length? number
---@field corner_radius? number smallest between walls; 0 for a sharp one, nil without a corner
---@field sharp_corner boolean
---@field floor_radius? number
---@field open boolean a side is missing
---@field faces integer[]

---@class TurnedSection
---@field inner boolean of a bore
---@field start number along the axis from the origin
---@field length number
---@field start_diameter number
---@field end_diameter number
---@field taper_angle? number whole angle
---@field faces integer[]

---@class Groove
---@field inner boolean
---@field start number
---@field width number
---@field depth number
---@field diameter number at its bottom
---@field point Point
---@field corner_radius number 0 for a sharp one
---@field faces integer[]

---@class Turned
---@field is boolean all but the reason is there for a turned part alone
---@field reason? string why it is none
---@field origin Point
---@field axis Point
---@field length number
---@field diameter number
---@field share number of the surface that lies around the axis
---@field sections TurnedSection[]
---@field grooves Groove[]

---@class Bend
---@field inner_radius number
---@field angle number by which the sheet is bent from flat
---@field length number along the bend line
---@field point Point
---@field axis Point along the bend line
---@field flange_length? number of the shorter flat beside it, from the outside of the bend
---@field closed boolean a hem
---@field faces integer[]

---@class SheetHole
---@field hole integer its number
---@field edge_distance? number
---@field bend? integer place in bends
---@field bend_distance? number

---@class SheetMetal
---@field is boolean all but the reason is there for a sheet alone
---@field reason? string why it is none
---@field thickness number
---@field bends Bend[]
---@field holes SheetHole[]

---@class Gaps
---@field places Thickness[] the narrowest of each pair of faces, and up to seven more with wider air between them; narrowest first

---@class FaceDraft
---@field face integer
---@field half "pull"|"opposite"|"either"|"both" of the mould; "both": the parting line crosses the face
---@field angle number to the pull, 0 of an upright wall
---@field area number
---@field point Point
---@field undercut boolean

---@class Undercut
---@field faces integer[]
---@field point Point
---@field area number
---@field slide? Point a slide that leaves this way frees it
---@field travel? number of the slide

---@class Draft
---@field pull Point
---@field faces FaceDraft[] every face, the least angle first
---@field undercuts Undercut[] the largest first
---@field parting_edges integer[]

---@class Overhang
---@field faces integer[]
---@field kind "cantilever"|"bridge"|"island"
---@field angle number from the horizontal where it is flattest
---@field area number
---@field span number
---@field point Point

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
---@return string? units of length in the file, boolean assumed neither the file nor the run names one: mm are taken
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
---What is left out of the file, such as features of a kind that is not known, and that gaps are closed.
---@return string[]
function part.notes() end
---How thick the walls are. An error for a part that is not closed.
---@return Walls
function part.walls() end
---@return Hole[]
function part.holes() end
---Threads that the file tells of.
---@return PartThread[]
function part.threads() end
---@return HolePattern[]
function part.patterns() end
---@return Fillet[]
function part.fillets() end
---Sharp inner corners.
---@return SharpCorner[]
function part.corners() end
---@return Pocket[]
function part.pockets() end
---@return Turned
function part.turned() end
---@return SheetMetal
function part.sheet() end
---Where the air between walls is narrow.
---@return Gaps
function part.gaps() end
---How the part leaves a mould; without a pull in the direction with the least undercut.
---@param options? {pull?: Point}
---@return Draft
function part.draft(options) end
---Faces that look down, flatter than `angle` (45) from the horizontal, when building towards `up` ({0, 0, 1}).
---@param options? {up?: Point, angle?: number}
---@return Overhang[]
function part.overhangs(options) end
