-- A prompt in a floating window, with what it finds above it as it is typed.
local page = require('vref.page')
local session = require('vref.session')

local M = {}

local mark = vim.api.nvim_create_namespace('vref')
local open = nil  -- the picker that is open: windows, buffers, hits, which of them is chosen, the request

local function text_of(prompt)
  return vim.trim(vim.api.nvim_buf_get_lines(prompt, 0, 1, false)[1] or '')
end

local function draw(lines)
  vim.api.nvim_buf_set_lines(open.list, 0, -1, false, lines)
  vim.api.nvim_buf_clear_namespace(open.list, mark, 0, -1)
  if open.hits[open.chosen] then
    vim.api.nvim_buf_add_highlight(open.list, mark, 'PmenuSel', open.chosen - 1, 0, -1)
    vim.api.nvim_win_set_cursor(open.list_window, { open.chosen, 0 })
  end
end

local function in_one_line(text)
  return (text:gsub('%s+', ' '))
end

local function draw_hits()
  local lines = {}
  for _, hit in ipairs(open.hits) do
    table.insert(lines, string.format('%s  %s, %s  %s', hit.name, hit.type, hit.product, in_one_line(hit.purpose)))
  end
  draw(lines)
end

local function take(picker, result, problem)
  if picker ~= open then
    return
  end
  open.request = nil
  open.hits = result and result.hits or {}
  open.chosen = 1
  if problem then
    draw({ in_one_line(problem.message) })
  elseif #open.hits == 0 then
    draw({ 'nothing is found' })
  else
    draw_hits()
  end
end

-- Asks what the prompt says; an older question is not wanted any more.
local function ask()
  if not open then
    return
  end
  local question = text_of(open.prompt)
  session.cancel(open.request)
  open.request = nil
  if question == '' then
    open.hits = {}
    draw({})
    return
  end
  local picker = open
  local params = { question = question, limit = vim.api.nvim_win_get_height(open.list_window),
                   fields = { 'name', 'type', 'product', 'purpose', 'address' }, prefer = session.options.prefer }
  open.request = session.request('ask', params, function(result, problem) take(picker, result, problem) end)
end

local function choose(step)
  if #open.hits > 0 then
    open.chosen = (open.chosen - 1 + step) % #open.hits + 1
    draw_hits()
  end
end

function M.close()
  local closed = open
  open = nil
  if not closed then
    return
  end
  session.cancel(closed.request)
  vim.cmd('stopinsert')
  for _, window in ipairs({ closed.prompt_window, closed.list_window }) do
    if vim.api.nvim_win_is_valid(window) then
      vim.api.nvim_win_close(window, true)
    end
  end
end

-- The entry is the nth that its question finds now, which is what the list shows. Before an answer has come, it is what
-- the answer will have first.
local function accept(use)
  local question, nth = text_of(open.prompt), open.chosen
  if open.request then
    nth = 1
  end
  M.close()
  if question ~= '' then
    page.look_up({ question = question, nth = nth }, use)
  end
end

local function float(height, row, options)
  local width = math.min(100, vim.o.columns - 4)
  local buffer = vim.api.nvim_create_buf(false, true)
  vim.api.nvim_buf_set_option(buffer, 'bufhidden', 'wipe')
  local window = vim.api.nvim_open_win(buffer, options.is_entered, {
    relative = 'editor', style = 'minimal', border = 'rounded', width = width, height = height, row = row,
    col = math.floor((vim.o.columns - width) / 2) - 1,
  })
  return buffer, window
end

-- Opens the picker, or empties the open one; `question` stands in the prompt at first.
function M.open(question)
  M.close()
  local height = math.max(3, math.min(10, vim.o.lines - 8))
  local row = math.max(0, math.floor((vim.o.lines - height - 4) / 2) - 1)
  local picker = { hits = {}, chosen = 1 }
  picker.list, picker.list_window = float(height, row, { is_entered = false })
  picker.prompt, picker.prompt_window = float(1, row + height + 2, { is_entered = true })
  vim.api.nvim_win_set_option(picker.list_window, 'wrap', false)
  open = picker

  local function key(keys, action)
    vim.keymap.set('i', keys, action, { buffer = picker.prompt, silent = true })
    vim.keymap.set('n', keys, action, { buffer = picker.prompt, silent = true })
  end
  key('<CR>', function() accept(page.open) end)
  key('<C-o>', function() accept(function(result) page.browse(result.hit) end) end)
  key('<Esc>', M.close)
  key('<C-c>', M.close)
  key('<Down>', function() choose(1) end)
  key('<C-n>', function() choose(1) end)
  key('<Up>', function() choose(-1) end)
  key('<C-p>', function() choose(-1) end)
  vim.api.nvim_create_autocmd({ 'TextChangedI', 'TextChanged' }, { buffer = picker.prompt, callback = ask })
  vim.api.nvim_create_autocmd('WinLeave', { buffer = picker.prompt, callback = function()
    if picker == open then
      vim.schedule(M.close)
    end
  end })

  vim.api.nvim_buf_set_lines(picker.prompt, 0, -1, false, { question or '' })
  vim.cmd('startinsert!')
  ask()
end

-- The lines that the open picker shows; nothing while none is open.
function M.lines()
  return open and vim.api.nvim_buf_get_lines(open.list, 0, -1, false) or nil
end

for _, method in ipairs({ 'documentationChanged', 'languageChanged' }) do
  session.on(method, ask)
end

return M
