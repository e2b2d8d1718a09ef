-- The session: one "vref watch --json" for the editor, started with the first request and again when it has died.
-- Speaks version 2 of its protocol: requests with callbacks, cancelled by their numbers, and notifications.
local M = {}

-- The code of the error that answers a request when there is no process; the user has been told.
M.dead = 0

M.options = { command = { 'vref' }, doc_root = nil, language = nil, prefer = {} }

local job = nil         -- of the running process
local is_ready = false  -- it has said that it can answer
local rest = ''         -- the beginning of a line that has not ended
local complaints = ''   -- what the process wrote to its error stream
local is_failure_told = false
local last_id = 0
local pending = {}      -- by id: { message, callback, is_repeated }
local listeners = {}    -- by method

local function tell_failure(text)
  if not is_failure_told then
    is_failure_told = true
    vim.notify('vref: ' .. text, vim.log.levels.ERROR)
  end
end

local function fail_all(text)
  local failed = pending
  pending = {}
  for _, request in pairs(failed) do
    request.callback(nil, { code = M.dead, message = text })
  end
end

local function take(line)
  local ok, message = pcall(vim.json.decode, line)
  if not ok or type(message) ~= 'table' then
    return
  end
  if message.notice == 'ready' then
    is_ready = true
    is_failure_told = false
    if not vim.tbl_contains(message.protocols or {}, 2) then
      tell_failure('the tool is too old for this plug-in')
    end
  elseif message.method then
    for _, listener in ipairs(listeners[message.method] or {}) do
      listener(message.params)
    end
  elseif message.id and pending[message.id] then
    local request = pending[message.id]
    pending[message.id] = nil
    request.callback(message.result, message.error)
  end
end

-- The first piece continues the line before, the last one has not ended.
local function on_output(_, pieces)
  rest = rest .. pieces[1]
  for at = 2, #pieces do
    take(rest)
    rest = pieces[at]
  end
end

local start

-- A process that has died and is not known to have yet takes nothing: what is pending is sent again when it is.
local function write(request)
  pcall(vim.fn.chansend, job, vim.json.encode(request.message) .. '\n')
end

-- What was asked is asked again, once: the next process may die of the same question.
local function on_exit(id, status)
  if id ~= job then
    return
  end
  job = nil
  local text = vim.trim(complaints)
  if text == '' then
    text = 'the tool ended with status ' .. status
  end
  if not is_ready then
    tell_failure(text)
    fail_all(text)
    return
  end
  local again = pending
  pending = {}
  for number, request in pairs(again) do
    if not request.is_repeated then
      request.is_repeated = true
      pending[number] = request
    else
      tell_failure(text)
      request.callback(nil, { code = M.dead, message = text })
    end
  end
  if next(pending) and start() then
    for _, request in pairs(pending) do
      write(request)
    end
  end
end

start = function()
  local command = vim.list_extend({}, M.options.command)
  vim.list_extend(command, { 'watch', '--json' })
  if M.options.doc_root then
    vim.list_extend(command, { '--doc-root', vim.fn.expand(M.options.doc_root) })
  end
  if M.options.language then
    vim.list_extend(command, { '--language', M.options.language })
  end
  is_ready, rest, complaints = false, '', ''
  local ok, result = pcall(vim.fn.jobstart, command, {
    on_stdout = on_output,
    on_stderr = function(_, pieces) complaints = complaints .. table.concat(pieces, '\n') end,
    on_exit = on_exit,
  })
  if not ok or result <= 0 then
    local text = 'the tool "' .. command[1] .. '" cannot be started'
    tell_failure(text)
    fail_all(text)
    return false
  end
  job = result
  return true
end

-- Sends a request. `callback(result, error)` is called once, unless the request is cancelled; never before this returns
-- a number for cancel(). Returns nothing if there is no tool.
function M.request(method, params, callback)
  if not job and not start() then
    return nil
  end
  last_id = last_id + 1
  local message = { jsonrpc = '2.0', id = last_id, method = method, params = params or vim.empty_dict() }
  pending[last_id] = { message = message, callback = callback }
  write(pending[last_id])
  return last_id
end

function M.cancel(id)
  if not id or not pending[id] then
    return
  end
  pending[id] = nil
  if job then
    write({ message = { jsonrpc = '2.0', method = '$/cancelRequest', params = { id = id } } })
  end
end

-- Waits for the answer, for no longer than `patience` milliseconds; nothing when there is none.
function M.call(method, params, patience)
  local result, is_answered = nil, false
  local id = M.request(method, params, function(value) result, is_answered = value, true end)
  if id and not vim.wait(patience, function() return is_answered end, 5) then
    M.cancel(id)
  end
  return result
end

-- Calls `listener(params)` for every notification of this method.
function M.on(method, listener)
  listeners[method] = listeners[method] or {}
  table.insert(listeners[method], listener)
end

-- The process's number; nothing while none runs.
function M.pid()
  local is_running, pid = pcall(vim.fn.jobpid, job or 0)
  return is_running and pid or nil
end

-- Ends the process; what is asked later starts another one.
function M.stop()
  local ended = job
  job = nil
  pending = {}
  is_failure_told = false
  if ended then
    vim.fn.jobstop(ended)
  end
end

return M
