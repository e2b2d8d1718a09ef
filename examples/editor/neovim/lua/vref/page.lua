-- Pages of the documentation: in a window that floats beside the cursor, in a scratch buffer, in the browser.
local session = require('vref.session')

local M = {}

-- What is asked of an entry besides its text.
M.fields = { 'name', 'type', 'product', 'address', 'change' }

local function lines_of(text)
  return vim.split(vim.trim(text), '\n', { plain = true })
end

-- Calls `done(result)` with the entry that the question finds first, or the nth; tells when there is none. Returns the
-- request's number.
function M.look_up(params, done)
  params = vim.tbl_extend('keep', params, { fields = M.fields, prefer = session.options.prefer })
  return session.request('show', params, function(result, problem)
    if problem and problem.code == session.dead then
      return
    elseif problem then
      vim.notify('vref: ' .. problem.message, vim.log.levels.WARN)
    elseif result.hit == vim.NIL then
      vim.notify('vref: nothing is found for "' .. (params.question or params.href) .. '"', vim.log.levels.INFO)
    else
      done(result)
    end
  end)
end

-- Shows the text of a page beside the cursor until that moves; a second call goes into the window. Returns the
-- window's buffer and the window.
function M.float(result)
  local buffer, window = vim.lsp.util.open_floating_preview(lines_of(result.text), 'vref', {
    border = 'rounded',
    focus_id = 'vref',
    max_width = 84,
    max_height = math.max(5, math.floor(vim.o.lines / 2)),
  })
  vim.api.nvim_buf_set_option(buffer, 'syntax', 'vref')
  return buffer, window
end

-- Opens the address of a hit in the desktop's browser.
function M.browse(hit)
  if not hit.address then
    vim.notify('vref: there is no file of this page', vim.log.levels.INFO)
    return
  end
  vim.fn.jobstart({ 'xdg-open', hit.address }, { detach = true })
end

-- Shows a page in a scratch buffer, in the window that showed the last one or else in a new one.
function M.open(result)
  local hit = result.hit
  local name = 'vref://' .. hit.product .. '/' .. hit.name
  local buffer = vim.fn.bufadd(name)
  vim.fn.bufload(buffer)
  vim.api.nvim_buf_set_option(buffer, 'modifiable', true)
  vim.api.nvim_buf_set_lines(buffer, 0, -1, false, lines_of(result.text))
  for option, value in pairs({ buftype = 'nofile', bufhidden = 'hide', swapfile = false, modifiable = false,
                               modified = false, filetype = 'vref' }) do
    vim.api.nvim_buf_set_option(buffer, option, value)
  end
  for _, window in ipairs(vim.api.nvim_tabpage_list_wins(0)) do
    if vim.bo[vim.api.nvim_win_get_buf(window)].filetype == 'vref' and
        vim.api.nvim_win_get_config(window).relative == '' then
      vim.api.nvim_set_current_win(window)
    end
  end
  if vim.bo.filetype ~= 'vref' then
    vim.cmd('split')
  end
  vim.api.nvim_win_set_buf(0, buffer)
  vim.api.nvim_win_set_cursor(0, { 1, 0 })
  local options = { buffer = buffer, silent = true }
  vim.keymap.set('n', 'q', '<Cmd>close<CR>', options)
  vim.keymap.set('n', 'gx', function() M.browse(hit) end, options)
  vim.keymap.set('n', 'K', function() require('vref').hover() end, options)
end

return M
