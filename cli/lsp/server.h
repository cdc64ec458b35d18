// The quill language server: LSP 3.17 over a pair of file descriptors.
#ifndef QUILL_CLI_LSP_SERVER_H_
#define QUILL_CLI_LSP_SERVER_H_

namespace quill::lsp {

// Serves until the client sends "exit" or closes the input; returns 0 after
// a clean shutdown, 1 otherwise.
int RunLanguageServer(int inputFd, int outputFd);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_SERVER_H_
