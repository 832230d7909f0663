---@meta
-- What the shipped rules share, for the Lua language server.

dfm = {}

---@class Check
---@field value? number what the part has; nil: it does not apply, and nothing is reported
---@field limit number
---@field unit? "mm"|"deg"|"%" without one the numbers are ratios
---@field what string begins the message: "the hole's depth"
---@field why? string ends the message
---@field at? Place|Place[]
---@field label? string of the places

---Reports a finding when the value is below the limit.
---@param check Check
function dfm.at_least(check) end

---Reports a finding when the value is above the limit.
---@param check Check
function dfm.at_most(check) end

---True when two lengths are equal but for rounding.
---@param a number
---@param b number
---@return boolean
function dfm.same(a, b) end

---A measure as a person reads it.
---@param value number
---@param unit? string
---@return string
function dfm.text(value, unit) end

---Ends the rule in an error unless the part is a closed solid.
function dfm.sound() end

---A line between two points, as a place.
---@param from Point
---@param to Point
---@param label? string
---@return Place
function dfm.line(from, to, label) end

---Faces by their numbers, as a place.
---@param numbers integer[]
---@param label? string
---@return Place
function dfm.faces(numbers, label) end

---The thinnest wall of a process in mm, and what it is for: the parameter `limit`, else of the rule database for the part's
---material, the parameter `material` or any material.
---@param process string
---@return number limit
---@return string? why
function dfm.thinnest(process) end

---The places of walls or gaps, those of each pair of faces from one side only.
---@param places Thickness[]
---@return Thickness[]
function dfm.pairs_once(places) end

---The sheet that the part is; ends the rule in an error when it is none.
---@return SheetMetal
function dfm.sheet() end

---The turned part that the part is; ends the rule in an error when it is none.
---@return Turned
function dfm.turned() end

---@class TappedHole
---@field hole Hole
---@field designation string of the thread
---@field diameter number nominal

---The holes with a thread that the file tells of; where it tells of none and `by_diameter` is true, blind holes with the
---diameter of a tap drill.
---@param by_diameter? boolean
---@return TappedHole[]
function dfm.tapped(by_diameter) end

---A table that is true for the numbers of faces that belong to holes.
---@return table<integer, boolean>
function dfm.hole_faces() end

---True when one of the values of a list is no further away than the tolerance.
---@param value number
---@param list number[]
---@param tolerance number
---@return boolean
function dfm.is_near(value, list, tolerance) end

---Groups of names, each a group of its own at first.
---@return fun(name: integer): integer find the name of a name's group
---@return fun(a: integer, b: integer) join makes one group of those of two names
function dfm.groups() end
