// JSON-RPC 2.0 messages framed with Content-Length headers, as the Language
// Server Protocol sends them over stdio.
#ifndef QUILL_CLI_LSP_JSON_RPC_H_
#define QUILL_CLI_LSP_JSON_RPC_H_

#include <cstddef>
#include <optional>
#include <string>

namespace quill::lsp {

// Messages larger than this are refused: their body is read and dropped.
inline constexpr std::size_t kMaxMessageBytes = 64u << 20;

struct Frame {
  enum class Kind { kMessage, kOversized, kBadHeader };
  Kind kind = Kind::kMessage;
  std::string body;
};

// Reads frames from a file descriptor without blocking past a deadline.
class FrameReader {
 public:
  explicit FrameReader(int fd) : fd_(fd) {}

  // The next complete frame if one arrives within `timeoutMs` (negative:
  // wait as long as it takes). Sets `closed` when the input has ended.
  std::optional<Frame> Next(int timeoutMs, bool* closed);

 private:
  std::optional<Frame> TakeFrame();

  int fd_;
  std::string buffer_;
  std::size_t skipping_ = 0;  // bytes of an oversized body still to drop
  bool eof_ = false;
};

// Writes one framed message; returns false when the output is gone.
bool WriteFrame(int fd, const std::string& body);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_JSON_RPC_H_
