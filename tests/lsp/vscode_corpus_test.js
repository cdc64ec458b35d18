// Drives `quill lsp` through vscode-languageserver-protocol on real files:
// the olofk-serv project of the corpus beside the repository (read only;
// nothing is written). Outline, definition from an instance to its module
// in another file, hover, references, folding and a code action.
// Usage: node vscode_corpus_test.js PATH_TO_QUILL CORPUS_PROJECT_FOLDER
'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const {
  InitializeRequest, InitializedNotification, DidOpenTextDocumentNotification, DocumentSymbolRequest,
  DefinitionRequest, HoverRequest, ReferencesRequest, FoldingRangeRequest, CodeActionRequest,
} = require('vscode-languageserver-protocol/node');
const { startSession } = require('./vscode_session');

const [quill, project] = process.argv.slice(2);
assert.ok(quill && project, 'usage: node vscode_corpus_test.js PATH_TO_QUILL CORPUS_PROJECT_FOLDER');

const uriOf = (relative) => pathToFileURL(path.join(project, relative)).href;
const at = (relative, line, character) => ({ textDocument: { uri: uriOf(relative) }, position: { line, character } });

async function main() {
  const { connection, waitForDiagnostics, indexed, shutDown } = startSession(quill);

  await connection.sendRequest(InitializeRequest.type, {
    processId: process.pid,
    rootUri: pathToFileURL(project).href,
    workspaceFolders: [{ uri: pathToFileURL(project).href, name: path.basename(project) }],
    capabilities: { window: { workDoneProgress: true } },
  });
  connection.sendNotification(InitializedNotification.type, {});
  await indexed;

  const open = (relative) => connection.sendNotification(DidOpenTextDocumentNotification.type, {
    textDocument: { uri: uriOf(relative), languageId: 'verilog', version: 1,
                    text: fs.readFileSync(path.join(project, relative), 'utf8') },
  });
  open('rtl/serv_top.v');

  // The outline: one module with its items.
  const outline = await connection.sendRequest(DocumentSymbolRequest.type, { textDocument: { uri: uriOf('rtl/serv_top.v') } });
  assert.equal(outline.length, 1, JSON.stringify(outline));
  assert.equal(outline[0].name, 'serv_top');
  assert.ok(outline[0].children.some((c) => c.name === 'alu'), 'the outline lists the instance alu');

  // "   serv_alu #(.W (W)) alu" on line 463: its module type leads to the
  // module in rtl/serv_alu.v, line 8.
  const definition = await connection.sendRequest(DefinitionRequest.type, at('rtl/serv_top.v', 462, 5));
  assert.equal(definition.length, 1, JSON.stringify(definition));
  assert.ok(definition[0].uri.endsWith('/rtl/serv_alu.v'), definition[0].uri);
  assert.equal(definition[0].range.start.line, 7);

  const hover = await connection.sendRequest(HoverRequest.type, at('rtl/serv_top.v', 462, 5));
  assert.ok(hover.contents.value.includes('module serv_alu'), JSON.stringify(hover));

  const references = await connection.sendRequest(ReferencesRequest.type,
    { ...at('rtl/serv_top.v', 462, 5), context: { includeDeclaration: true } });
  assert.ok(references.some((r) => r.uri.endsWith('/rtl/serv_top.v') && r.range.start.line === 462),
            JSON.stringify(references));
  assert.ok(references.some((r) => r.uri.endsWith('/rtl/serv_alu.v')), JSON.stringify(references));

  open('rtl/serv_alu.v');
  const folds = await connection.sendRequest(FoldingRangeRequest.type, { textDocument: { uri: uriOf('rtl/serv_alu.v') } });
  assert.ok(folds.length > 0, 'folding ranges for serv_alu.v');

  // serv_rf_if.v line 140 assigns a 5-bit value to a 1-bit output.
  const rfIf = uriOf('rtl/serv_rf_if.v');
  open('rtl/serv_rf_if.v');
  const published = await waitForDiagnostics(rfIf);
  const onLine = published.filter((d) => d.range.start.line === 139);
  assert.ok(onLine.some((d) => d.code === 'width-mismatch'), JSON.stringify(published));
  const actions = await connection.sendRequest(CodeActionRequest.type, {
    textDocument: { uri: rfIf },
    range: { start: { line: 139, character: 0 }, end: { line: 139, character: 0 } },
    context: { diagnostics: onLine },
  });
  assert.ok(actions.some((a) => a.title === 'Disable width-mismatch on this line'), JSON.stringify(actions));

  await shutDown();
  console.log('vscode protocol client on corpus files: outline, definition, hover, references, folding, code action passed');
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
