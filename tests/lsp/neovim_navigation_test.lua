-- Run by run_neovim_navigation_test.sh in the workspace folder, after the
-- README's set-up: every check goes through Neovim's own LSP client.
local t = dofile(vim.fn.fnamemodify(debug.getinfo(1, 'S').source:sub(2), ':h') .. '/neovim_test_helpers.lua')
  .new('neovim navigation test')
local fail, client_of, request, at = t.fail, t.client_of, t.request, t.at

-- The LSP form of the diagnostics on one line, as a code action request
-- carries them.
local function line_diagnostics(bufnr, line)
  if vim.fn.has('nvim-0.8') == 0 then return vim.lsp.diagnostic.get_line_diagnostics(bufnr, line) end
  local found = {}
  for _, d in ipairs(vim.diagnostic.get(bufnr, { lnum = line })) do
    table.insert(found, d.user_data and d.user_data.lsp or {
      range = { start = { line = d.lnum, character = d.col }, ['end'] = { line = d.end_lnum, character = d.end_col } },
      message = d.message, code = d.code, source = d.source,
    })
  end
  return found
end

-- The constraint file attaches too and gets semantic tokens.
vim.cmd('edit pins.xdc')
local xdc = vim.api.nvim_get_current_buf()
if vim.bo.filetype ~= 'xdc' then fail('.xdc filetype is ' .. vim.bo.filetype) end
local client = client_of(xdc)
local tokens = request(client, 'textDocument/semanticTokens/full', { textDocument = { uri = vim.uri_from_bufnr(xdc) } }, xdc)
if #tokens.data == 0 then fail('no semantic tokens for the .xdc file') end

vim.cmd('edit top.v')
local top = vim.api.nvim_get_current_buf()
if client_of(top).id ~= client.id then fail('the .v buffer got a second client') end

local outline = request(client, 'textDocument/documentSymbol', { textDocument = { uri = vim.uri_from_bufnr(top) } }, top)
if #outline ~= 1 or outline[1].name ~= 'top' or #outline[1].children ~= 4 then fail('outline: ' .. vim.inspect(outline)) end

-- The index is built in the background: wait until the other file is in.
local definition
vim.wait(10000, function()
  definition = request(client, 'textDocument/definition', at(top, 2, 4), top)
  return #definition > 0
end, 100)
if #definition ~= 1 or not definition[1].uri:match('rtl/counter%.v$') or definition[1].range.start.line ~= 2 then
  fail('definition: ' .. vim.inspect(definition))
end

local hover = request(client, 'textDocument/hover', at(top, 2, 4), top)
if not hover.contents.value:find('output reg [W-1:0] q', 1, true) then fail('hover: ' .. vim.inspect(hover)) end

local references = at(top, 1, 14)
references.context = { includeDeclaration = true }
local found = request(client, 'textDocument/references', references, top)
if #found ~= 3 then fail('references: ' .. vim.inspect(found)) end

vim.cmd('edit rtl/counter.v')
local counter = vim.api.nvim_get_current_buf()
client_of(counter)
local folds = request(client, 'textDocument/foldingRange', { textDocument = { uri = vim.uri_from_bufnr(counter) } }, counter)
if #folds ~= 3 or folds[1].kind ~= 'comment' then fail('folding: ' .. vim.inspect(folds)) end

local got = vim.wait(10000, function()
  for _, d in ipairs(vim.diagnostic.get(counter)) do
    if d.code == 'blocking-assign' then return true end
  end
  return false
end, 50)
if not got then fail('no blocking-assign diagnostic') end
local actions = request(client, 'textDocument/codeAction', {
  textDocument = { uri = vim.uri_from_bufnr(counter) },
  range = { start = { line = 6, character = 0 }, ['end'] = { line = 6, character = 0 } },
  context = { diagnostics = line_diagnostics(counter, 6) },
}, counter)
local fix
for _, action in ipairs(actions) do
  if action.title == "Use '<=' in this sequential block" then fix = action end
end
if not fix then fail('no quick fix: ' .. vim.inspect(actions)) end
vim.lsp.util.apply_workspace_edit(fix.edit, 'utf-16')
local line = vim.api.nvim_buf_get_lines(counter, 7, 8, false)[1]
if line ~= '    q <= q + 1;' then fail('after the fix: ' .. line) end

io.stdout:write('neovim navigation: .xdc and .v attach; outline, definition, hover, references, folding, code action passed\n')
vim.cmd('qall!')
