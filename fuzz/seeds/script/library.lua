local t = {} for i = 1, 100 do t[i] = string.rep("a", i) end
local s = table.concat(t)
assert(s:find("^(a+)$"))
return select("#", table.unpack(t)) == 100, string.format("%5.2f %q", 1.5, s:gsub("a", "b", 3))
