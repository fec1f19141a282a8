local t = os.clock()
for rounds = 0, 249 do
  local i, s, n = 0, 0, 200000
  while i < n do s = s + i % 7 * 3; i = i + 1 end
end
print(string.format("loop           %9.2f ms", (os.clock() - t) * 1000))
local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end
t = os.clock()
fib(32)
print(string.format("fib(32)        %9.2f ms", (os.clock() - t) * 1000))
local a = {}
for i = 1, 50000 do a[i] = 0 end
t = os.clock()
for k = 0, 399 do
  for i = 1, 50000 do a[i] = a[i] + i end
  a[1] = 0
  if k % 20 == 0 then for i = 1, 50000 do a[i] = 0 end end
end
print(string.format("array          %9.2f ms", (os.clock() - t) * 1000))
local tasks = {}
for i = 1, 10000 do
  tasks[i] = coroutine.create(function() while true do coroutine.yield() end end)
end
for i = 1, 10000 do coroutine.resume(tasks[i]) end
t = os.clock()
for k = 1, 100 do
  for i = 1, 10000 do coroutine.resume(tasks[i]) end
end
print(string.format("resume 10,000  %9.3f ms  a frame", (os.clock() - t) * 10))
