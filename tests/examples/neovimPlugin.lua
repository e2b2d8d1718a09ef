-- Drives the plug-in for Neovim in a real editor: this one starts another, types into it, and looks at what it shows.
-- Needs VREF (the tool), PLUGIN (the folder of the plug-in) and DOC_ROOT. Ends with status 0 when all tests hold.

local patience = 30000  -- milliseconds; a tool with sanitizers is slow
local editor            -- the channel to the editor under test

local function fail(text)
  error(text, 0)
end

local function start_editor()
  editor = vim.fn.jobstart({ vim.v.progpath, '--embed', '--headless', '-u', 'NONE', '-i', 'NONE', '-n' }, { rpc = true })
  local function run(code, ...) return vim.rpcrequest(editor, 'nvim_exec_lua', code, { ... }) end
  run([[
    local plugin, tool, root = ...
    vim.o.columns, vim.o.lines = 120, 40
    vim.opt.runtimepath:append(plugin)
    vim.cmd('runtime! plugin/vref.lua')
    vim.cmd('syntax on')
    told = {}
    vim.notify = function(text) table.insert(told, text) end
    require('vref').setup({ command = { tool }, doc_root = root })
  ]], os.getenv('PLUGIN'), os.getenv('VREF'), os.getenv('DOC_ROOT'))
  return run
end

local function keys(text)
  vim.rpcrequest(editor, 'nvim_input', text)
end

local run

-- Waits until the code returns what is true to `holds`, and returns it.
local function wait(what, code, holds)
  local value
  local is_done = vim.wait(patience, function()
    value = run(code)
    return holds(value)
  end, 20)
  if not is_done then
    fail('not seen: ' .. what .. '; there is: ' .. vim.inspect(value) .. ', told: ' .. vim.inspect(run('return told')))
  end
  return value
end

local function expect(what, is, wanted)
  if not vim.deep_equal(is, wanted) then
    fail(what .. ': ' .. vim.inspect(is) .. ' instead of ' .. vim.inspect(wanted))
  end
end

local function contains(text)
  return function(value) return type(value) == 'string' and value:find(text, 1, true) ~= nil end
end

-- The text of all floating windows, and of the current buffer; the lines of the picker.
local floating = [[
  local text = ''
  for _, window in ipairs(vim.api.nvim_list_wins()) do
    if vim.api.nvim_win_get_config(window).relative ~= '' then
      text = text .. table.concat(vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(window), 0, -1, false), '\n')
    end
  end
  return text]]
local current = [[return table.concat(vim.api.nvim_buf_get_lines(0, 0, -1, false), '\n')]]
local listed = [[return table.concat(require('vref.picker').lines() or { 'closed' }, '\n')]]
local mode = [[return vim.fn.mode()]]

local function edit(text, column)
  keys('<Esc><Esc>')
  run([[
    vim.cmd('silent! only!')
    vim.cmd('enew!')
    vim.api.nvim_buf_set_lines(0, 0, -1, false, { (...) })
    vim.api.nvim_win_set_cursor(0, { 1, select(2, ...) })
    told = {}]], text, column)
end

local tests = {}

function tests.hover_shows_the_page_under_the_cursor()
  edit('y = brisk.FilterChain(x)', 12)
  run([[vim.keymap.set('n', 'K', '<Plug>(vref-hover)')]])
  keys('K')
  local text = wait('a floating page', floating, contains('brisk.FilterChain'))
  for _, part in ipairs({ 'Filter sections in a row that keep their state', 'SYNTAX', 'SEE ALSO' }) do
    expect('"' .. part .. '" on the page', contains(part)(text), true)
  end
  keys('l')
  wait('the page to close when the cursor moves', floating, function(value) return value == '' end)
end

function tests.names_are_taken_up_to_the_part_under_the_cursor()
  for _, row in ipairs({
    { 'x = os.path.join(a)', 4, 'os' }, { 'x = os.path.join(a)', 8, 'os.path' },
    { 'x = os.path.join(a)', 13, 'os.path.join' }, { 'std::vector<int>', 6, 'std::vector' },
    { 'p->size()', 4, 'p->size' }, { 'größe(x)', 1, 'größe' }, { '(x)', 0, nil }, { '', 0, nil },
  }) do
    edit(row[1], row[2])
    local name = run([[return require('vref').name_under_cursor()]])
    expect(row[1] .. ' at ' .. row[2], name ~= vim.NIL and name or nil, row[3])
  end
end

function tests.an_unknown_name_is_told()
  edit('qqqqxzzz', 0)
  run([[vim.cmd('VrefHover')]])
  wait('that nothing is found', 'return told[1]', contains('nothing is found for "qqqqxzzz"'))
end

function tests.the_command_opens_a_page()
  edit('', 0)
  keys(':Vref filtre type:function<CR>')
  local text = wait('the page', current, contains('Filter a signal with a rational transfer function'))
  expect('the name first', text:match('^[^\n]*'), 'filter')
  expect('its file type', run('return vim.bo.filetype'), 'vref')
  expect('read only', run('return vim.bo.modifiable'), false)
  local windows = run('return #vim.api.nvim_list_wins()')
  keys(':Vref Table<CR>')
  wait('another page in its place', 'return vim.api.nvim_buf_get_name(0)', contains('vref://veltra/Table'))
  expect('the windows', run('return #vim.api.nvim_list_wins()'), windows)
  keys('q')
  wait('the window to close', 'return vim.bo.filetype', function(value) return value ~= 'vref' end)
end

function tests.the_picker_follows_the_typing()
  edit('', 0)
  keys(':Vref<CR>')
  wait('the prompt', listed, function(value) return value ~= 'closed' end)
  wait('insert mode', mode, function(value) return value == 'i' end)
  keys('filter')
  wait('what was typed', listed, contains('filter  function, brisk'))
  keys('zzqq')
  wait('that nothing is found', listed, contains('nothing is found'))
  keys('<C-u>sort type:functoin')
  wait('the error of a question', listed, contains('"functoin" is no value of the filter'))
  keys('<C-u>filter')
  wait('the hits again', listed, contains('filter  function, brisk'))
  keys('<Down><CR>')
  wait('the page of the second', current, contains('Filter an image with a mask'))
  expect('the picker', run(listed), 'closed')
  wait('normal mode', mode, function(value) return value == 'n' end)
end

function tests.escape_closes_the_picker()
  edit('before', 0)
  run([[require('vref').pick('filter')]])
  wait('the question in the prompt', listed, contains('filter  function, brisk'))
  keys('<Esc>')
  wait('the end', listed, function(value) return value == 'closed' end)
  wait('the windows to close', floating, function(value) return value == '' end)
  expect('the buffer', run(current), 'before')
end

-- Only the last question is answered, and only its answer is shown.
function tests.older_questions_are_cancelled()
  edit('', 0)
  run([[
    local session = require('vref.session')
    asked, answered, cancelled = 0, 0, 0
    local request, cancel = session.request, session.cancel
    session.request = function(method, params, callback)
      asked = asked + 1
      return request(method, params, function(...) answered = answered + 1; callback(...) end)
    end
    session.cancel = function(id) if id then cancelled = cancelled + 1 end; cancel(id) end
    local picker = require('vref.picker')
    picker.open()
    -- All in one go: no answer can come between.
    for _, text in ipairs({ 't', 'ta', 'tab', 'tabl', 'table' }) do
      vim.api.nvim_buf_set_lines(0, 0, -1, false, { text })
      vim.api.nvim_exec_autocmds('TextChangedI', { buffer = 0 })
    end]])
  wait('the hits of the last', listed, contains('table  function, veltra'))
  wait('every other question to be cancelled', 'return asked - answered - cancelled', function(open) return open == 0 end)
  expect('four cancelled at least', run('return cancelled >= 4'), true)
  keys('<Esc>')
end

function tests.completion_goes_on_from_what_is_typed()
  edit('', 0)
  run([[vim.bo.omnifunc = "v:lua.require'vref'.complete"; vim.o.completeopt = 'menu']])
  keys('iy = brisk.FilterC<C-x><C-o>')
  wait('the completed name', current, contains('y = brisk.FilterChain'))
  keys('<Esc>')
  local words = run([[return require('vref').complete(0, 'filt')]])
  expect('the first word', words[1].word, 'filter')
  expect('its kind', words[1].kind, 'function')
  expect('no words', run([[return require('vref').complete(0, 'zzqq')]]), {})
end

function tests.a_killed_process_is_replaced()
  edit('filter', 0)
  run([[vim.cmd('VrefHover')]])
  wait('a page', floating, contains('filter'))
  local pid = run([[return require('vref.session').pid()]])
  -- Under a question: it is asked again.
  edit('filter', 0)
  run([[
    local session = require('vref.session')
    vim.loop.kill(session.pid(), 'sigstop')
    vim.cmd('VrefHover')
    vim.loop.kill(session.pid(), 'sigkill')]])
  wait('a page from another process', floating, contains('filter'))
  local other = run([[return require('vref.session').pid()]])
  expect('another process', other ~= pid and other ~= vim.NIL, true)
  expect('nothing to tell', run('return told'), {})
  -- Between questions: the next one starts it.
  edit('Table', 0)
  run([[vim.loop.kill(require('vref.session').pid(), 'sigkill')]])
  wait('its end', [[return require('vref.session').pid()]], function(value) return value == vim.NIL end)
  run([[vim.cmd('VrefHover')]])
  wait('a page again', floating, contains('Table'))
end

function tests.what_keeps_the_tool_from_starting_is_told_once()
  edit('filter', 0)
  run([[require('vref').setup({ doc_root = '/nowhere' })]])
  run([[ended = 0]])
  for round = 1, 3 do
    run([[vim.cmd('VrefHover')]])
    run([[require('vref.session').request('products', {}, function() ended = ended + 1 end)]])
    wait('the end', 'return ended', function(value) return value == round end)
  end
  local errors = vim.tbl_filter(contains('no usable documentation set'), run('return told'))
  expect('the errors in ' .. vim.inspect(run('return told')), #errors, 1)

  run([[told = {}; require('vref').setup({ command = { '/no/such/tool' } })]])
  for _ = 1, 3 do
    run([[vim.cmd('VrefHover')]])
  end
  expect('completion without the tool', run([[return require('vref').complete(0, 'filt')]]), {})
  expect('the errors', #run('return told'), 1)

  -- And it works again when it can.
  run([[told = {}; require('vref').setup({ command = { (...) }, doc_root = select(2, ...) })]], os.getenv('VREF'),
    os.getenv('DOC_ROOT'))
  run([[vim.cmd('VrefHover')]])
  wait('a page', floating, contains('filter'))
end

function tests.an_open_picker_asks_again_when_the_documentation_changes()
  edit('', 0)
  run([[require('vref').pick('filter')]])
  wait('the hits', listed, contains('Filter a signal with a rational transfer function'))
  run([[require('vref.session').request('setLanguage', { language = 'ja' }, function() end)]])
  wait('the hits in the other language', listed, contains('有理伝達関数による信号のフィルター処理'))
  keys('<Esc>')
end

local names = vim.tbl_keys(tests)
table.sort(names)
local failed = 0
for _, name in ipairs(names) do
  run = start_editor()
  local ok, problem = pcall(tests[name])
  io.stdout:write((ok and 'ok: ' or 'FAILED: ') .. name .. (ok and '' or ': ' .. tostring(problem)) .. '\n')
  failed = failed + (ok and 0 or 1)
  pcall(run, [[require('vref.session').stop()]])
  vim.fn.jobstop(editor)
  vim.fn.jobwait({ editor }, patience)
end
io.stdout:write(#names - failed .. ' passed, ' .. failed .. ' failed\n')
vim.cmd(failed == 0 and #names > 0 and 'qall!' or 'cquit')
