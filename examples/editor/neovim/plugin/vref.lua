if vim.g.loaded_vref then
  return
end
vim.g.loaded_vref = true

vim.api.nvim_create_user_command('Vref', function(call) require('vref').ask(call.args) end,
  { nargs = '*', desc = 'Open the page that answers the question; without one, pick as you type' })
vim.api.nvim_create_user_command('VrefHover', function() require('vref').hover() end,
  { desc = 'Show the page of the entity under the cursor' })
vim.keymap.set('n', '<Plug>(vref-hover)', function() require('vref').hover() end)
vim.keymap.set('n', '<Plug>(vref-pick)', function() require('vref').pick() end)
