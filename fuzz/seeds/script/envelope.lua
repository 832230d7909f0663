-- The printer's working space in mm. The part may be turned, so sorted edges are compared.
local space = {150, 200, 250}

local size = {mesh.part():size()}
table.sort(size)
for i = 1, 3 do
    if size[i] > space[i] then
        return false, string.format("the part measures %.1f x %.1f x %.1f mm, the printer takes %d x %d x %d mm",
            size[1], size[2], size[3], space[1], space[2], space[3])
    end
end
