-- Headless Neovim with its built-in LSP client: open a Verilog file, wait for
-- quill's diagnostics, format the buffer, write it and compare with the
-- formatter's own output. Run: nvim --headless -u NONE -l? (see the .sh).
local quill = vim.env.QUILL
local file = vim.env.QUILL_TEST_FILE
local expected_file = vim.env.QUILL_EXPECTED_FILE

local function fail(message)
  io.stderr:write('neovim client test failed: ' .. message .. '\n')
  vim.cmd('cquit 1')
end

vim.cmd('edit ' .. vim.fn.fnameescape(file))
vim.bo.filetype = 'verilog'
local client_id = vim.lsp.start_client({
  name = 'quill',
  cmd = { quill, 'lsp' },
  root_dir = vim.fn.fnamemodify(file, ':h'),
})
if not client_id then fail('the client did not start') end
vim.lsp.buf_attach_client(0, client_id)

local got = vim.wait(10000, function() return #vim.diagnostic.get(0) > 0 end, 50)
if not got then fail('no diagnostics arrived') end
local found = false
for _, d in ipairs(vim.diagnostic.get(0)) do
  if d.source == 'quill' then found = true end
end
if not found then fail('diagnostics do not come from quill') end

local client = vim.lsp.get_client_by_id(client_id)
local params = vim.lsp.util.make_formatting_params({})
local result = client.request_sync('textDocument/formatting', params, 10000, 0)
if not result or result.err then fail('formatting failed: ' .. vim.inspect(result)) end
vim.lsp.util.apply_text_edits(result.result or {}, 0, 'utf-16')
vim.cmd('write')

local actual = table.concat(vim.fn.readfile(file, 'b'), '\n')
local expected = table.concat(vim.fn.readfile(expected_file, 'b'), '\n')
if actual ~= expected then fail('the file on disk differs from quill format output') end
client.stop()
io.stdout:write('neovim client: diagnostics and formatting passed\n')
vim.cmd('qall!')
