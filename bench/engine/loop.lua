-- loop.lua [ROW...]: the rows of bench_engine, as another language has them.
local wanted = {...}

local function row(name, unit, measure)
  local found = #wanted == 0
  for _, word in ipairs(wanted) do found = found or word == name end
  if found then print(string.format("%-15s %9.3f %s", name, measure(), unit)) end
end

row("loop", "ms", function()
  local t = os.clock()
  for rounds = 0, 249 do
    local i, s, n = 0, 0, 200000
    while i < n do s = s + i % 7 * 3; i = i + 1 end
  end
  return (os.clock() - t) * 1000
end)

row("fib", "ms  of 32", function()
  local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end
  local t = os.clock()
  fib(32)
  return (os.clock() - t) * 1000
end)

row("array", "ms", function()
  local a = {}
  for i = 1, 50000 do a[i] = 0 end
  local t = os.clock()
  for k = 0, 399 do
    for i = 1, 50000 do a[i] = a[i] + i end
    a[1] = 0
    if k % 20 == 0 then for i = 1, 50000 do a[i] = 0 end end
  end
  return (os.clock() - t) * 1000
end)

row("resume", "ms  a frame of 10,000", function()
  local tasks = {}
  for i = 1, 10000 do
    tasks[i] = coroutine.create(function() while true do coroutine.yield() end end)
  end
  for i = 1, 10000 do coroutine.resume(tasks[i]) end
  local t = os.clock()
  for k = 1, 100 do
    for i = 1, 10000 do coroutine.resume(tasks[i]) end
  end
  return (os.clock() - t) * 10
end)
