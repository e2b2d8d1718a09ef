-- Reference documentation in the editor; doc/vref.txt tells how to use it.
local page = require('vref.page')
local picker = require('vref.picker')
local session = require('vref.session')

local M = {}

-- What completion waits for at most, in milliseconds: it holds up typing.
local patience = 1000

session.on('warning', function(params) vim.notify('vref: ' .. params.text, vim.log.levels.WARN) end)

-- Options: command (a list), doc_root, language, prefer (products, a list).
function M.setup(options)
  session.stop()
  session.options = vim.tbl_extend('force', session.options, options or {})
end

-- Where the dotted name begins that ends before this byte of the line (0 for the first).
local function begin_of_name(line, stop)
  local before = line:sub(1, stop)
  local first = before:find('[%w_%.\128-\255]*$')
  -- C++ and some others divide names in other ways.
  while before:sub(1, first - 1):find('[%w_][:%-][:>]$') do
    first = before:sub(1, first - 3):find('[%w_%.\128-\255]*$')
  end
  return first - 1
end

-- The name under the cursor, up to the end of the part that the cursor is on: of "os.path.join" it is "os.path" on the
-- second part.
function M.name_under_cursor()
  local line = vim.api.nvim_get_current_line()
  local column = vim.api.nvim_win_get_cursor(0)[2]
  local _, stop = line:find('^[%w_\128-\255]*', column + 1)
  if stop == column then  -- on no part of a name
    return nil
  end
  local name = line:sub(begin_of_name(line, stop) + 1, stop):gsub('^%.+', '')
  return name ~= '' and name or nil
end

local hovering = nil

-- Shows the page of the entity under the cursor in a floating window.
function M.hover()
  local name = M.name_under_cursor()
  if not name then
    return
  end
  local buffer, tick = vim.api.nvim_get_current_buf(), vim.api.nvim_win_get_cursor(0)
  session.cancel(hovering)
  hovering = page.look_up({ question = name, width = 80 }, function(result)
    -- Who has gone on does not want it any more.
    if vim.api.nvim_get_current_buf() == buffer and vim.deep_equal(vim.api.nvim_win_get_cursor(0), tick) then
      page.float(result)
    end
  end)
end

-- Opens the page that answers the question; without one, the picker.
function M.ask(question)
  if question == '' then
    picker.open()
  else
    page.look_up({ question = question }, page.open)
  end
end

M.pick = picker.open

-- For 'omnifunc' and 'completefunc'.
function M.complete(is_for_start, base)
  if is_for_start == 1 then
    return begin_of_name(vim.api.nvim_get_current_line(), vim.api.nvim_win_get_cursor(0)[2])
  end
  local params = { prefix = base, limit = 50, prefer = session.options.prefer }
  local result = session.call('complete', params, patience)
  local words = {}
  for _, completion in ipairs(result and result.completions or {}) do
    table.insert(words, { word = completion.text, kind = completion.type, menu = completion.purpose,
                          info = completion.purpose, icase = 1 })
  end
  return words
end

return M
