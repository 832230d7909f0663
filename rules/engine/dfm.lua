-- What the shipped rules share: how a finding is worded and shown, and what a rule may rely on.
-- A rule that uses it names the engine `part` before it.
local dfm = {}

-- Rounding of CAD systems is below this, in mm and degrees: a wall of 0.9999996 mm is 1 mm.
local TOLERANCE = 1e-3

local DIGITS = {mm = "%.2f mm", deg = "%.1f°", kg = "%.3f kg", ["%"] = "%.0f %%"}

--- A measure as a person reads it; a number without a unit is a ratio.
function dfm.text(value, unit)
    return string.format(unit and (DIGITS[unit] or "%g " .. unit) or "%.1f", value)
end

--- Ends the rule in an error unless the part is a closed solid of a size that can be: on anything else measures of walls
--- and features mean nothing, and the rule must not pass. A unit that the file or the run names is trusted.
function dfm.sound()
    if #part.solids() == 0 then
        error("the part is no closed solid, so it cannot be measured", 0)
    end
    local _, assumed = part.units()
    for _, damage in ipairs(part.damages()) do
        if damage.kind == "size" and assumed then error(damage.message .. "; --units says it", 0) end
    end
end

local function place(at, label)
    if not at then return nil end
    local places = #at > 0 and at or {at}
    for _, one in ipairs(places) do one.label = one.label or label end
    return places
end

local function find(check, word)
    local what = check.what or "this measure"
    local message = string.format("%s is %s, %s %s%s", what, dfm.text(check.value, check.unit), word,
        dfm.text(check.limit, check.unit), check.why and " " .. check.why or "")
    result.finding {
        message = message, measured = check.value, limit = check.limit, unit = check.unit,
        at = place(check.at, check.label or what),
    }
end

--- Reports a finding when `value` is below `limit`. A value of nil is a measure that does not apply.
function dfm.at_least(check)
    if check.value and check.value < check.limit - TOLERANCE then find(check, "at least") end
end

--- Reports a finding when `value` is above `limit`.
function dfm.at_most(check)
    if check.value and check.value > check.limit + TOLERANCE then find(check, "at most") end
end

--- True when two lengths are equal but for rounding.
function dfm.same(a, b)
    return math.abs(a - b) <= TOLERANCE
end

--- True when one of the values of a list is no further away than the tolerance.
function dfm.is_near(value, list, tolerance)
    for _, known in ipairs(list) do
        if math.abs(value - known) <= tolerance then return true end
    end
    return false
end

--- Groups of names, each a group of its own at first: a function that gives the name of a name's group, and one that
--- joins the groups of two names.
function dfm.groups()
    local above = {}
    local function find(name)
        while above[name] do
            above[name] = above[above[name]] or above[name]
            name = above[name]
        end
        return name
    end
    local function join(a, b)
        a, b = find(a), find(b)
        if a ~= b then above[a] = b end
    end
    return find, join
end

--- A line between two points, as a place.
function dfm.line(from, to, label)
    return {polyline = {from, to}, label = label}
end

--- Faces by their numbers, as a place.
function dfm.faces(numbers, label)
    return {faces = numbers, label = label}
end

--- The sheet that the part is; ends the rule in an error when it is none.
function dfm.sheet()
    dfm.sound()
    local sheet = part.sheet()
    if not sheet.is then error("this is no sheet: " .. sheet.reason, 0) end
    return sheet
end

--- The turned part that the part is; ends the rule in an error when it is none.
function dfm.turned()
    dfm.sound()
    local turned = part.turned()
    if not turned.is then error("this is no turned part: " .. turned.reason, 0) end
    return turned
end

--- The holes with a thread, each a table with `hole`, `designation` and `diameter`: those that the file tells of; where it
--- tells of none and `by_diameter` is true, blind holes with the diameter of a tap drill.
function dfm.tapped(by_diameter)
    local tapped, told = {}, part.threads()
    for _, hole in ipairs(part.holes()) do
        local thread = told[hole.thread]
        if thread then
            tapped[#tapped + 1] = {hole = hole, designation = thread.designation, diameter = thread.diameter}
        elseif #told == 0 and by_diameter and hole.tap_drill_for and hole.bottom ~= "through" then
            local row = assert(db.thread(hole.tap_drill_for))
            tapped[#tapped + 1] = {hole = hole, designation = row.designation, diameter = row.nominal}
        end
    end
    return tapped
end

--- The faces of all holes: a table whose field is true for the number of such a face.
function dfm.hole_faces()
    local faces = {}
    for _, hole in ipairs(part.holes()) do
        for _, face in ipairs(hole.faces) do faces[face] = true end
    end
    return faces
end

--- The places of walls or gaps, those of each pair of faces from one side only: that of the first, the narrowest.
function dfm.pairs_once(places)
    local once, side = {}, {}
    for _, place in ipairs(places) do
        local a, b = place.faces[1], place.faces[2]
        local pair = math.min(a, b) .. " " .. math.max(a, b)
        side[pair] = side[pair] or a
        if side[pair] == a then once[#once + 1] = place end
    end
    return once
end

--- The thinnest wall of a process, in mm, and what it is for: the parameter `limit`, else a row of the rule database:
--- that of the part's material, else of the parameter `material`, else of any material.
function dfm.thinnest(process)
    if params.limit then return params.limit end
    local row = part.material and db.minimum_wall(process, part.material)
    local isOwn = row and row.material:lower() == part.material:lower()
    if not isOwn and params.material then row = assert(db.minimum_wall(process, params.material)) end
    row = row or assert(db.minimum_wall(process))
    local of = row.material == "any" and "" or " of " .. row.material
    return row.minimum, "for " .. row.process .. of
end

return dfm
