#include "lsp/json_rpc.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace quill::lsp {
namespace {

constexpr std::string_view kHeaderEnd = "\r\n\r\n";
constexpr std::string_view kLengthField = "content-length:";

bool StartsWithIgnoreCase(std::string_view s, std::string_view prefix) {
  if (s.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    char c = s[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != prefix[i]) return false;
  }
  return true;
}

// The Content-Length of a header block, or nullopt when it has none.
std::optional<std::size_t> ContentLength(std::string_view header) {
  std::size_t start = 0;
  while (start < header.size()) {
    std::size_t end = header.find("\r\n", start);
    if (end == std::string_view::npos) end = header.size();
    std::string_view line = header.substr(start, end - start);
    if (StartsWithIgnoreCase(line, kLengthField)) {
      std::string_view value = line.substr(kLengthField.size());
      while (!value.empty() && value.front() == ' ') value.remove_prefix(1);
      if (value.empty() || value.size() > 18) return std::nullopt;
      std::size_t length = 0;
      for (char c : value) {
        if (c == ' ') break;
        if (c < '0' || c > '9') return std::nullopt;
        length = length * 10 + static_cast<std::size_t>(c - '0');
      }
      return length;
    }
    start = end + 2;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Frame> FrameReader::TakeFrame() {
  if (skipping_ > 0) {
    std::size_t dropped = std::min(skipping_, buffer_.size());
    buffer_.erase(0, dropped);
    skipping_ -= dropped;
    if (skipping_ > 0) return std::nullopt;
  }
  std::size_t headerEnd = buffer_.find(kHeaderEnd);
  if (headerEnd == std::string::npos) {
    // A header never grows this large; drop it rather than buffer forever.
    if (buffer_.size() > 64 * 1024) {
      buffer_.clear();
      return Frame{Frame::Kind::kBadHeader, {}};
    }
    return std::nullopt;
  }
  std::optional<std::size_t> length = ContentLength(std::string_view(buffer_).substr(0, headerEnd));
  const std::size_t bodyStart = headerEnd + kHeaderEnd.size();
  if (!length) {
    buffer_.erase(0, bodyStart);
    return Frame{Frame::Kind::kBadHeader, {}};
  }
  if (*length > kMaxMessageBytes) {
    buffer_.erase(0, bodyStart);
    std::size_t dropped = std::min(*length, buffer_.size());
    buffer_.erase(0, dropped);
    skipping_ = *length - dropped;
    return Frame{Frame::Kind::kOversized, {}};
  }
  if (buffer_.size() - bodyStart < *length) return std::nullopt;
  Frame frame{Frame::Kind::kMessage, buffer_.substr(bodyStart, *length)};
  buffer_.erase(0, bodyStart + *length);
  return frame;
}

std::optional<Frame> FrameReader::Next(int timeoutMs, bool* closed) {
  *closed = false;
  while (true) {
    if (std::optional<Frame> frame = TakeFrame()) return frame;
    if (eof_) {
      *closed = true;
      return std::nullopt;
    }
    pollfd wait{fd_, POLLIN, 0};
    int ready = poll(&wait, 1, timeoutMs);
    if (ready < 0 && errno == EINTR) continue;
    if (ready == 0) return std::nullopt;
    char chunk[65536];
    ssize_t got = read(fd_, chunk, sizeof chunk);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) {
      eof_ = true;
      continue;
    }
    buffer_.append(chunk, static_cast<std::size_t>(got));
  }
}

bool WriteFrame(int fd, const std::string& body) {
  std::string message = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  std::size_t written = 0;
  while (written < message.size()) {
    ssize_t n = write(fd, message.data() + written, message.size() - written);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    written += static_cast<std::size_t>(n);
  }
  return true;
}

}  // namespace quill::lsp
