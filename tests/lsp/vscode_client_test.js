// Drives `quill lsp` through vscode-languageserver-protocol, the protocol
// library of VS Code's own language client: initialize, open files, receive
// diagnostics, format, range-format, semantic tokens, shutdown.
'use strict';

const assert = require('node:assert/strict');
const { spawn, spawnSync } = require('node:child_process');
const {
  createProtocolConnection, StreamMessageReader, StreamMessageWriter, InitializeRequest,
  InitializedNotification, DidOpenTextDocumentNotification, DidChangeTextDocumentNotification,
  PublishDiagnosticsNotification, DocumentFormattingRequest, DocumentRangeFormattingRequest,
  SemanticTokensRequest, SemanticTokensRangeRequest, ShutdownRequest, ExitNotification,
} = require('vscode-languageserver-protocol/node');

const quill = process.argv[2];
assert.ok(quill, 'usage: node vscode_client_test.js PATH_TO_QUILL');

function applyEdits(text, edits) {
  const lines = text.split('\n');
  const offsetOf = (p) => {
    let offset = 0;
    for (let i = 0; i < p.line && i < lines.length; ++i) offset += lines[i].length + 1;
    return Math.min(offset + p.character, text.length);
  };
  const sorted = [...edits].sort((a, b) => offsetOf(b.range.start) - offsetOf(a.range.start));
  for (const e of sorted) {
    text = text.slice(0, offsetOf(e.range.start)) + e.newText + text.slice(offsetOf(e.range.end));
  }
  return text;
}

async function main() {
  const server = spawn(quill, ['lsp'], { stdio: ['pipe', 'pipe', 'inherit'] });
  const exited = new Promise((resolve) => server.on('exit', (code) => resolve(code)));
  const connection = createProtocolConnection(new StreamMessageReader(server.stdout),
                                              new StreamMessageWriter(server.stdin));
  const diagnostics = new Map();
  const waiters = [];
  connection.onNotification(PublishDiagnosticsNotification.type, (params) => {
    diagnostics.set(params.uri, params.diagnostics);
    waiters.splice(0).forEach((w) => w());
  });
  connection.listen();
  const waitForDiagnostics = async (uri, predicate) => {
    for (let tries = 0; tries < 50; ++tries) {
      if (diagnostics.has(uri) && predicate(diagnostics.get(uri))) return diagnostics.get(uri);
      await Promise.race([new Promise((r) => waiters.push(r)), new Promise((r) => setTimeout(r, 200))]);
    }
    throw new Error(`no diagnostics for ${uri}`);
  };

  const init = await connection.sendRequest(InitializeRequest.type,
    { processId: process.pid, rootUri: null, capabilities: {} });
  assert.equal(init.capabilities.documentFormattingProvider, true);
  assert.equal(init.capabilities.documentRangeFormattingProvider, true);
  const legend = init.capabilities.semanticTokensProvider.legend;
  assert.ok(legend.tokenTypes.includes('keyword'));
  connection.sendNotification(InitializedNotification.type, {});

  // Diagnostics on open, then on change (latest text wins).
  const uri = 'file:///work/counter.v';
  const source = 'module counter(input clk, output reg [3:0] q);\n' +
                 'always @(posedge clk) begin\n  q = q + 1;\nend\nendmodule\n';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri, languageId: 'verilog', version: 1, text: source } });
  const found = await waitForDiagnostics(uri, (d) => d.length > 0);
  const blocking = found.find((d) => d.code === 'blocking-assign');
  assert.ok(blocking, 'blocking-assign reported');
  assert.equal(blocking.source, 'quill');
  assert.equal(blocking.range.start.line, 1);
  assert.equal(blocking.range.start.character, 0);

  const fixed = source.replace('q = q + 1;', 'q <= q + 1;');
  connection.sendNotification(DidChangeTextDocumentNotification.type,
    { textDocument: { uri, version: 2 }, contentChanges: [{ text: fixed }] });
  await waitForDiagnostics(uri, (d) => !d.some((x) => x.code === 'blocking-assign'));

  // Formatting returns edits that turn the text into the formatter's output.
  const messy = 'module m (\n  input  a,\n    output b\n);\nwire   x;\nreg [7:0]  longer_name;\nendmodule\n';
  const muri = 'file:///work/m.sv';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: muri, languageId: 'systemverilog', version: 1, text: messy } });
  const edits = await connection.sendRequest(DocumentFormattingRequest.type,
    { textDocument: { uri: muri }, options: { tabSize: 4, insertSpaces: true } });
  assert.ok(edits.length > 0, 'formatting changes the messy text');
  // Range formatting touches only the requested lines.
  const ranged = await connection.sendRequest(DocumentRangeFormattingRequest.type,
    { textDocument: { uri: muri }, range: { start: { line: 4, character: 0 }, end: { line: 5, character: 0 } },
      options: { tabSize: 4, insertSpaces: true } });
  assert.ok(ranged.length > 0 && ranged.length < edits.length, JSON.stringify(ranged));
  for (const e of ranged) {
    assert.ok(e.range.end.line >= 4 && e.range.start.line <= 6, JSON.stringify(e));
  }

  const formatted = applyEdits(messy, edits);
  const expected = spawnSync(quill, ['format', '-'], { input: messy, encoding: 'utf8' }).stdout;
  assert.equal(formatted, expected);
  connection.sendNotification(DidChangeTextDocumentNotification.type,
    { textDocument: { uri: muri, version: 2 }, contentChanges: [{ text: formatted }] });
  const again = await connection.sendRequest(DocumentFormattingRequest.type,
    { textDocument: { uri: muri }, options: { tabSize: 4, insertSpaces: true } });
  assert.deepEqual(again, [], 'formatting the formatted text changes nothing');

  // Incremental sync: replace one character by a range edit.
  connection.sendNotification(DidChangeTextDocumentNotification.type,
    { textDocument: { uri: muri, version: 3 },
      contentChanges: [{ range: { start: { line: 0, character: 7 }, end: { line: 0, character: 8 } }, text: 'n' }] });
  const renamed = await connection.sendRequest(DocumentFormattingRequest.type,
    { textDocument: { uri: muri }, options: { tabSize: 4, insertSpaces: true } });
  assert.deepEqual(renamed, [], 'the edited text is still formatted');

  // Semantic tokens for a constraint file.
  const xuri = 'file:///work/pins.xdc';
  const xdc = 'set_property PACKAGE_PIN W5 [get_ports clk] # pin\n';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: xuri, languageId: 'xdc', version: 1, text: xdc } });
  const tokens = await connection.sendRequest(SemanticTokensRequest.type, { textDocument: { uri: xuri } });
  assert.ok(tokens.data.length > 0 && tokens.data.length % 5 === 0);
  assert.equal(legend.tokenTypes[tokens.data[3]], 'keyword');  // set_property at 0:0
  assert.deepEqual(tokens.data.slice(0, 3), [0, 0, 12]);
  const rangeTokens = await connection.sendRequest(SemanticTokensRangeRequest.type,
    { textDocument: { uri: xuri }, range: { start: { line: 0, character: 0 }, end: { line: 0, character: 10 } } });
  assert.ok(rangeTokens.data.length > 0);

  // Unknown methods are errors, not crashes.
  await assert.rejects(connection.sendRequest('quill/noSuchMethod', {}));

  await connection.sendRequest(ShutdownRequest.type);
  connection.sendNotification(ExitNotification.type);
  assert.equal(await exited, 0);
  connection.dispose();
  console.log('vscode-languageserver-protocol client: all checks passed');
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
