-- A wall is thick enough for how the part is made. The rule's parameters say how, and of what.
dfm.sound()
local limit, why = dfm.thinnest(params.process)
for _, wall in ipairs(dfm.pairs_once(part.walls().places)) do
    dfm.at_least {
        value = wall.value, limit = limit, unit = "mm", what = "a wall", why = why, at = dfm.line(wall.point, wall.opposite),
        label = "thin wall",
    }
end
