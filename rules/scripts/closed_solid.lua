-- A part that is no valid closed solid cannot be judged by any other rule, nor be made.
local function place(damage)
    if #damage.points > 1 then return {polyline = damage.points, label = damage.kind} end
    if #damage.points == 1 then return {point = damage.points[1], label = damage.kind} end
    return #damage.faces > 0 and {faces = damage.faces, label = damage.kind} or nil
end

local damages = part.damages()
local _, assumed = part.units()
for _, damage in ipairs(damages) do
    if damage.kind ~= "size" then
        result.finding {message = damage.message, at = place(damage)}
    elseif assumed then
        result.finding {message = damage.message .. "; --units says it", at = place(damage)}
    else
        result.note {message = damage.message, at = place(damage)}
    end
end
for _, note in ipairs(part.notes()) do
    result.note {message = note}
end
if #damages == 0 and #part.solids() == 0 then
    return false, "the part has no solid"
end
