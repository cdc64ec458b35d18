-- Run by run_neovim_navigation_test.sh --corpus in the olofk-serv project of
-- the corpus (read only; nothing is written), after the README's set-up:
-- outline, definition from an instance to its module in another file,
-- hover, references, folding and a code action through Neovim's client.
local t = dofile(vim.fn.fnamemodify(debug.getinfo(1, 'S').source:sub(2), ':h') .. '/neovim_test_helpers.lua')
  .new('neovim corpus test')
local fail, client_of, request, at = t.fail, t.client_of, t.request, t.at

vim.cmd('edit rtl/serv_top.v')
local top = vim.api.nvim_get_current_buf()
local client = client_of(top)

local outline = request(client, 'textDocument/documentSymbol', { textDocument = { uri = vim.uri_from_bufnr(top) } }, top)
local has_alu = false
for _, child in ipairs(outline[1] and outline[1].children or {}) do
  if child.name == 'alu' then has_alu = true end
end
if #outline ~= 1 or outline[1].name ~= 'serv_top' or not has_alu then fail('outline: ' .. vim.inspect(outline)) end

-- "   serv_alu #(.W (W)) alu" on line 463 leads to rtl/serv_alu.v, line 8.
local definition
vim.wait(20000, function()
  definition = request(client, 'textDocument/definition', at(top, 462, 5), top)
  return #definition > 0
end, 100)
if #definition ~= 1 or not definition[1].uri:match('rtl/serv_alu%.v$') or definition[1].range.start.line ~= 7 then
  fail('definition: ' .. vim.inspect(definition))
end

local hover = request(client, 'textDocument/hover', at(top, 462, 5), top)
if not hover.contents.value:find('module serv_alu', 1, true) then fail('hover: ' .. vim.inspect(hover)) end

local params = at(top, 462, 5)
params.context = { includeDeclaration = true }
local found = false
for _, location in ipairs(request(client, 'textDocument/references', params, top)) do
  if location.uri:match('rtl/serv_top%.v$') and location.range.start.line == 462 then found = true end
end
if not found then fail('references miss the instance') end

vim.cmd('edit rtl/serv_alu.v')
local alu = vim.api.nvim_get_current_buf()
client_of(alu)
local folds = request(client, 'textDocument/foldingRange', { textDocument = { uri = vim.uri_from_bufnr(alu) } }, alu)
if #folds == 0 then fail('no folding ranges') end

-- Line 140 of serv_rf_if.v gives a 1-bit output a 5-bit value.
vim.cmd('edit rtl/serv_rf_if.v')
local rf = vim.api.nvim_get_current_buf()
client_of(rf)
local actions = request(client, 'textDocument/codeAction', {
  textDocument = { uri = vim.uri_from_bufnr(rf) },
  range = { start = { line = 139, character = 0 }, ['end'] = { line = 139, character = 0 } },
  context = { diagnostics = {} },
}, rf)
local disable = false
for _, action in ipairs(actions) do
  if action.title == 'Disable width-mismatch on this line' then disable = true end
end
if not disable then fail('no code action: ' .. vim.inspect(actions)) end

io.stdout:write('neovim on corpus files: outline, definition, hover, references, folding, code action passed\n')
vim.cmd('qall!')
