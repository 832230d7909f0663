local c = coroutine.wrap(function(a) local b = coroutine.yield(a) error({b}) end)
c(1) print(pcall(c, 2)) local m = setmetatable({}, {__index = function(t, k) return t[k + 1] end}) return m[1]
