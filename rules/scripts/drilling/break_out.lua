-- Most of the area of a hole lies in the material, so that the drill is held on all sides.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    local angle = math.rad(hole.turn)
    local share = 100 * (angle - math.sin(angle)) / (2 * math.pi) -- of the circle, on the side of the arc
    if hole.turn < 360 then
        dfm.at_least {
            value = share, limit = params.limit, unit = "%", what = "the share of a hole that is inside the material",
            at = {faces = hole.faces}, label = "breaks out",
        }
    end
end
