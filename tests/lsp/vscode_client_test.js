// Drives `quill lsp` through vscode-languageserver-protocol, the protocol
// library of VS Code's own language client: initialize on a workspace folder,
// index it with progress, open files, receive diagnostics, format,
// range-format, semantic tokens, outline, definition across files, hover,
// references, folding, code actions, hostile requests, shutdown.
'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { spawnSync } = require('node:child_process');
const {
  InitializeRequest, InitializedNotification, DidOpenTextDocumentNotification, DidChangeTextDocumentNotification,
  DocumentFormattingRequest, DocumentRangeFormattingRequest, SemanticTokensRequest, SemanticTokensRangeRequest,
  DocumentSymbolRequest, DefinitionRequest, HoverRequest, ReferencesRequest, FoldingRangeRequest,
  CodeActionRequest, WorkspaceSymbolRequest, DocumentHighlightRequest, DidChangeWatchedFilesNotification,
} = require('vscode-languageserver-protocol/node');
const { startSession } = require('./vscode_session');

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
  const { connection, waitForDiagnostics, indexed, progressKinds, registrations, shutDown } = startSession(quill);

  // A workspace of two files on disk, indexed by the server.
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'quill-lsp-'));
  const topText = 'module top(input clk, output [3:0] q);\n  wire [3:0] count;\n' +
                  '  counter #(.W(4)) u_count (.clk(clk), .q(count));\n  assign q = count;\nendmodule\n';
  const counterText = '// counts clock edges\n// on every rising edge\nmodule counter #(parameter W = 8) (\n' +
                      '  input clk,\n  output reg [W-1:0] q\n);\n  always @(posedge clk) begin\n    q = q + 1;\n' +
                      '  end\nendmodule\n';
  fs.writeFileSync(path.join(folder, 'top.v'), topText);
  fs.mkdirSync(path.join(folder, 'rtl'));
  fs.writeFileSync(path.join(folder, 'rtl', 'counter.v'), counterText);
  const folderUri = 'file://' + folder;
  const init = await connection.sendRequest(InitializeRequest.type,
    { processId: process.pid, rootUri: folderUri, workspaceFolders: [{ uri: folderUri, name: 'w' }],
      capabilities: { window: { workDoneProgress: true },
                      workspace: { didChangeWatchedFiles: { dynamicRegistration: true } } } });
  for (const p of ['documentSymbolProvider', 'workspaceSymbolProvider', 'definitionProvider', 'referencesProvider',
                   'hoverProvider', 'documentHighlightProvider', 'foldingRangeProvider']) {
    assert.equal(init.capabilities[p], true, p);
  }
  assert.deepEqual(init.capabilities.codeActionProvider.codeActionKinds, ['quickfix']);
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
    { textDocument: { uri: muri }, range: { start: { line: 4, character: 0 }, end: { line: 6, character: 0 } },
      options: { tabSize: 4, insertSpaces: true } });
  assert.ok(ranged.length > 0 && ranged.length < edits.length, JSON.stringify(ranged));
  // The range ends at the start of line 6: only lines 4 and 5 may change.
  for (const e of ranged) {
    assert.ok(e.range.start.line >= 4, JSON.stringify(e));
    assert.ok(e.range.end.line < 6 || (e.range.end.line === 6 && e.range.end.character === 0), JSON.stringify(e));
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


  // A known extension wins over the language id, both ways.
  const tclNamedUri = 'file:///work/as_tcl.v';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: tclNamedUri, languageId: 'tcl', version: 1, text: source } });
  await waitForDiagnostics(tclNamedUri, (d) => d.some((x) => x.code === 'blocking-assign'));
  const verilogNamedUri = 'file:///work/as_verilog.xdc';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: verilogNamedUri, languageId: 'verilog', version: 1, text: xdc } });
  const xdcTokens = await connection.sendRequest(SemanticTokensRequest.type, { textDocument: { uri: verilogNamedUri } });
  assert.ok(xdcTokens.data.length > 0);

  // Navigation over the indexed workspace.
  await Promise.race([indexed, new Promise((_, reject) => setTimeout(() => reject(new Error('no progress end')), 20000))]);
  assert.deepEqual(progressKinds[0], 'begin');
  assert.ok(registrations.some((r) => r.method === 'workspace/didChangeWatchedFiles'), 'watcher registered');
  const topUri = folderUri + '/top.v';
  const counterUri = folderUri + '/rtl/counter.v';
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: topUri, languageId: 'verilog', version: 1, text: topText } });
  const outline = await connection.sendRequest(DocumentSymbolRequest.type, { textDocument: { uri: topUri } });
  assert.equal(outline.length, 1);
  assert.equal(outline[0].name, 'top');
  assert.deepEqual(outline[0].children.map((c) => c.name), ['clk', 'q', 'count', 'u_count']);
  const definition = await connection.sendRequest(DefinitionRequest.type,
    { textDocument: { uri: topUri }, position: { line: 2, character: 4 } });
  // Open documents outside the folder declare a `counter` too; the index's file is among the answers.
  const inFolder = (locations) => locations.filter((l) => l.uri.startsWith(folderUri));
  assert.deepEqual(inFolder(definition),
    [{ uri: counterUri, range: { start: { line: 2, character: 7 }, end: { line: 2, character: 14 } } }]);
  const hover = await connection.sendRequest(HoverRequest.type,
    { textDocument: { uri: topUri }, position: { line: 2, character: 4 } });
  assert.equal(hover.contents.kind, 'markdown');
  assert.ok(hover.contents.value.includes('module counter'), hover.contents.value);
  const references = await connection.sendRequest(ReferencesRequest.type,
    { textDocument: { uri: counterUri }, position: { line: 2, character: 9 }, context: { includeDeclaration: false } });
  assert.deepEqual(references, [{ uri: topUri, range: { start: { line: 2, character: 2 }, end: { line: 2, character: 9 } } }]);
  const symbols = await connection.sendRequest(WorkspaceSymbolRequest.type, { query: 'count' });
  assert.deepEqual([...new Set(symbols.map((x) => x.name))].sort(), ['counter', 'u_count']);
  const highlights = await connection.sendRequest(DocumentHighlightRequest.type,
    { textDocument: { uri: topUri }, position: { line: 1, character: 14 } });
  assert.equal(highlights.length, 3);
  const folding = await connection.sendRequest(FoldingRangeRequest.type, { textDocument: { uri: counterUri } });
  assert.deepEqual(folding, [{ startLine: 0, endLine: 1, kind: 'comment' }, { startLine: 2, endLine: 9 },
                             { startLine: 6, endLine: 8 }]);

  // A quick fix for the blocking assignment the server reports.
  connection.sendNotification(DidOpenTextDocumentNotification.type,
    { textDocument: { uri: counterUri, languageId: 'verilog', version: 1, text: counterText } });
  const counterFindings = await waitForDiagnostics(counterUri, (d) => d.some((x) => x.code === 'blocking-assign'));
  const finding = counterFindings.find((x) => x.code === 'blocking-assign');
  const actions = await connection.sendRequest(CodeActionRequest.type,
    { textDocument: { uri: counterUri }, range: finding.range, context: { diagnostics: [finding] } });
  const fix = actions.find((a) => a.title === "Use '<=' in this sequential block");
  assert.ok(fix, JSON.stringify(actions));
  assert.equal(applyEdits(counterText, fix.edit.changes[counterUri]), counterText.replace('q = q + 1', 'q <= q + 1'));
  assert.ok(actions.some((a) => a.title === 'Disable blocking-assign on this line'));

  // A file changed on disk is read again when the watcher reports it.
  fs.writeFileSync(path.join(folder, 'extra.v'), 'module extra; counter u_more (); endmodule\n');
  connection.sendNotification(DidChangeWatchedFilesNotification.type,
    { changes: [{ uri: folderUri + '/extra.v', type: 1 }] });
  const more = await connection.sendRequest(ReferencesRequest.type,
    { textDocument: { uri: counterUri }, position: { line: 2, character: 9 }, context: { includeDeclaration: true } });
  assert.equal(inFolder(more).length, 3);

  // Hostile requests get answers and the server stays up.
  const hostile = [
    [DefinitionRequest.type, { textDocument: { uri: topUri }, position: { line: -5, character: 1e12 } }],
    [HoverRequest.type, { textDocument: { uri: topUri }, position: { line: 'x', character: null } }],
    [ReferencesRequest.type, { textDocument: { uri: 42 }, position: { line: 0, character: 0 } }],
    [FoldingRangeRequest.type, { textDocument: { uri: 'file:///nowhere.v' } }],
    [CodeActionRequest.type, { textDocument: { uri: topUri }, range: 7, context: { diagnostics: 'x' } }],
    [DocumentSymbolRequest.type, { textDocument: { uri: xuri } }],
    [DocumentRangeFormattingRequest.type, { textDocument: { uri: muri }, range: { start: { line: 1e15, character: -1 }, end: { line: 2 } } }],
  ];
  for (const [type, params] of hostile) {
    try {
      await connection.sendRequest(type, params);
    } catch (error) {
      assert.ok(error.code !== undefined, String(error));
    }
  }
  await connection.sendRequest('textDocument/definition', 42).catch(() => {});
  const stillUp = await connection.sendRequest(DocumentSymbolRequest.type, { textDocument: { uri: topUri } });
  assert.equal(stillUp.length, 1);
  fs.rmSync(folder, { recursive: true, force: true });

  // Unknown methods are errors, not crashes.
  await assert.rejects(connection.sendRequest('quill/noSuchMethod', {}));

  await shutDown();
  console.log('vscode-languageserver-protocol client: all checks passed');
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
