// One `quill lsp` process driven through vscode-languageserver-protocol, set
// up as both VS Code protocol tests need it: the connection, the diagnostics
// published so far, the end of the workspace indexing, the progress kinds and
// the dynamic registrations the server asked for.
'use strict';

const assert = require('node:assert/strict');
const { spawn } = require('node:child_process');
const {
  createProtocolConnection, StreamMessageReader, StreamMessageWriter, PublishDiagnosticsNotification,
  WorkDoneProgressCreateRequest, RegistrationRequest, ShutdownRequest, ExitNotification,
} = require('vscode-languageserver-protocol/node');

function startSession(quill) {
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
  let progressEnded;
  const indexed = new Promise((resolve) => { progressEnded = resolve; });
  const progressKinds = [];
  const registrations = [];
  connection.onRequest(WorkDoneProgressCreateRequest.type, () => null);
  connection.onRequest(RegistrationRequest.type, (params) => { registrations.push(...params.registrations); return null; });
  connection.onNotification('$/progress', (params) => {
    progressKinds.push(params.value.kind);
    if (params.value.kind === 'end') progressEnded();
  });
  connection.listen();

  // The diagnostics last published for `uri` once `predicate` holds for
  // them; fails after about ten seconds.
  const waitForDiagnostics = async (uri, predicate = () => true) => {
    for (let tries = 0; tries < 50; ++tries) {
      if (diagnostics.has(uri) && predicate(diagnostics.get(uri))) return diagnostics.get(uri);
      await Promise.race([new Promise((r) => waiters.push(r)), new Promise((r) => setTimeout(r, 200))]);
    }
    throw new Error(`no diagnostics for ${uri}`);
  };

  // Shutdown and exit; the server must end with code 0.
  const shutDown = async () => {
    await connection.sendRequest(ShutdownRequest.type);
    connection.sendNotification(ExitNotification.type);
    assert.equal(await exited, 0);
    connection.dispose();
  };

  return { connection, diagnostics, waitForDiagnostics, indexed, progressKinds, registrations, shutDown };
}

module.exports = { startSession };
