---@meta
-- What the script host gives each script, for the Lua language server. docs/script-rules.md is the reference.

---@class Point a table with x, y and z, or a list of three numbers; mm, in the part's coordinates
---@field x number
---@field y number
---@field z number

---@class Place where a finding is: one of the fields, and a label if you like; a plain point serves too
---@field point? Point
---@field box? Point[] two opposite corners
---@field polyline? Point[]
---@field facets? Point[][] triangles
---@field faces? integer[] numbers of faces
---@field label? string

---@class Finding
---@field message string
---@field measured? number
---@field limit? number
---@field unit? string "mm", "deg"
---@field at? Place|Place[]|Point
---@field fingerprint? string

result = {}

---Reports that the part does not meet the rule.
---@param finding Finding|string
function result.finding(finding) end

---Reports something that fails nothing.
---@param note Finding|string
function result.note(note) end

---The values of the rule's parameters by their names; read only.
---@type table<string, number|string|boolean|any[]>
params = {}

---@class DrillSize
---@field diameter number
---@field preferred boolean
---@field source string

---@class Thread
---@field designation string "M6"
---@field series string "coarse" or "fine"
---@field nominal number
---@field pitch number
---@field tap_drill number
---@field source string

---@class ClearanceHole
---@field nominal number
---@field diameter number
---@field source string

---@class Material
---@field name string
---@field group string "steel", "aluminium"
---@field bend_group? string
---@field density? number kg/m3
---@field youngs_modulus? number GPa
---@field yield_strength? number MPa
---@field tensile_strength? number MPa
---@field source string

---@class BendRadius
---@field bend_group string
---@field thickness number
---@field radius number
---@field source string

---@class MinimumWall
---@field process string
---@field material string
---@field minimum number
---@field source string

---The rule database; what is not in it is nil and a message.
db = {}

---@param preferred? boolean
---@return DrillSize[]
function db.drill_sizes(preferred) end
---@param diameter number
---@param preferred? boolean
---@return DrillSize?, string?
function db.nearest_drill(diameter, preferred) end
---@param name string
---@return Thread?, string?
function db.thread(name) end
---@param nominal number
---@return Thread[]
function db.threads(nominal) end
---@param nominal number
---@param fit? "fine"|"medium"|"coarse"
---@return ClearanceHole?, string?
function db.clearance_hole(nominal, fit) end
---@param name string
---@return Material?, string?
function db.material(name) end
---@return Material[]
function db.materials() end
---@param material string
---@param thickness number
---@param direction? "along"|"across" to the rolling direction
---@return BendRadius?, string?
function db.bend_radius(material, thickness, direction) end
---@param process string
---@param material? string
---@return MinimumWall?, string?
function db.minimum_wall(process, material) end
---@return MinimumWall[]
function db.minimum_walls() end

---The example engine for meshes.
mesh = {}

---@class MeshPart
local MeshPart = {}
---@return MeshPart
function mesh.part() end
---@return number x, number y, number z
function MeshPart:size() end
---@return number? of a closed surface
function MeshPart:volume() end
---@return number
function MeshPart:area() end
---@return integer
function MeshPart:triangles() end
---@return boolean
function MeshPart:closed() end
---@return number? thickness, Point[]? sides
function MeshPart:thinnest() end
