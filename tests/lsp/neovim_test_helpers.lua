-- What the Neovim editor tests share: failing with a message, the client of
-- a buffer in the API of the Neovim that runs, synchronous requests and
-- positions. Loaded with dofile; `name` goes into failure messages.
local M = {}

function M.new(name)
  local t = {}

  function t.fail(message)
    io.stderr:write(name .. ' failed: ' .. message .. '\n')
    vim.cmd('cquit 1')
  end

  -- 0.7 has only buf_get_clients, which later versions deprecate.
  function t.clients_of(bufnr)
    if vim.lsp.get_clients then return vim.lsp.get_clients({ bufnr = bufnr }) end
    if vim.fn.has('nvim-0.8') == 1 then return vim.lsp.get_active_clients({ bufnr = bufnr }) end
    return vim.lsp.buf_get_clients(bufnr)
  end

  function t.client_of(bufnr)
    local ok = vim.wait(10000, function() return next(t.clients_of(bufnr)) ~= nil end, 50)
    if not ok then t.fail('no client attached to ' .. vim.api.nvim_buf_get_name(bufnr)) end
    local _, client = next(t.clients_of(bufnr))
    return client
  end

  function t.request(client, method, params, bufnr)
    local response = client.request_sync(method, params, 10000, bufnr)
    if not response or response.err then t.fail(method .. ' failed: ' .. vim.inspect(response)) end
    return response.result
  end

  function t.at(bufnr, line, character)
    return { textDocument = { uri = vim.uri_from_bufnr(bufnr) }, position = { line = line, character = character } }
  end

  return t
end

return M
