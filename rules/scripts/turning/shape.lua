-- A turned part is round about one axis.
dfm.sound()
local turned = part.turned()
if not turned.is then
    local box = part.box()
    result.finding {message = "this is no turned part: " .. turned.reason, at = {box = {box.least, box.greatest}, label = "the whole part"}}
end
