-- The part is not too long. The rule's parameters say how long it may be.
local length = mesh.part():size()
if length > params.longest then
    return false, {
        message = string.format("the part is %.2f mm long, at most %.2f mm are allowed", length, params.longest),
        measured = length, limit = params.longest, unit = "mm",
    }
end
