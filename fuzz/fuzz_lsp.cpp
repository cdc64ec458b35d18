// Drives the language server with a session built from the fuzzer's bytes:
// documents of random text opened, edited at random ranges and closed,
// formatting and token requests at random positions, frames of random bytes
// and header blocks without a length. The session ends with shutdown and
// exit; every request the session sent must get exactly one response.
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "lsp/server.h"

namespace {

using Json = nlohmann::json;

// Request ids carry this prefix; random frames that reuse such an id, or
// that would end the session early, are left out so every counted id is ours.
constexpr std::string_view kIdPrefix = "fz#";

const char* const kUris[] = {"file:///w/top.v", "file:///w/pkg.sv", "file:///w/pins.xdc", "file:///w/run.tcl",
                             "file:///w/notes.txt"};
const char* const kLanguageIds[] = {"", "verilog", "systemverilog", "tcl", "plaintext"};

class Session {
 public:
  explicit Session(FuzzedDataProvider& data) : data_(data) {}

  void Build() {
    Request("initialize", {{"processId", nullptr}, {"capabilities", Json::object()}});
    Notification("initialized", Json::object());
    while (data_.remaining_bytes() > 0 && steps_++ < 64) Step();
    Request("shutdown", nullptr);
    Notification("exit", nullptr);
  }

  const std::string& Stream() const { return stream_; }
  const std::vector<std::string>& Ids() const { return ids_; }

 private:
  void Step() {
    switch (data_.ConsumeIntegralInRange<int>(0, 9)) {
      case 0:
      case 1:
        return Open();
      case 2:
        return Change();
      case 3:
        return Notification("textDocument/didClose", {{"textDocument", {{"uri", Uri()}}}});
      case 4:
        return Request("textDocument/formatting", {{"textDocument", {{"uri", Uri()}}}, {"options", Options()}});
      case 5:
        return Request("textDocument/rangeFormatting",
                       {{"textDocument", {{"uri", Uri()}}}, {"range", Range()}, {"options", Options()}});
      case 6:
        return Request("textDocument/semanticTokens/full", {{"textDocument", {{"uri", Uri()}}}});
      case 7:
        return Request("textDocument/semanticTokens/range", {{"textDocument", {{"uri", Uri()}}}, {"range", Range()}});
      case 8:
        return RandomFrame();
      default:
        return HeaderWithoutLength();
    }
  }

  void Open() {
    Json item = {{"uri", Uri()}, {"version", data_.ConsumeIntegral<std::int32_t>()}, {"text", Text()}};
    const char* languageId = kLanguageIds[data_.ConsumeIntegralInRange<std::size_t>(0, 4)];
    if (*languageId != '\0') item["languageId"] = languageId;
    Notification("textDocument/didOpen", {{"textDocument", item}});
  }

  void Change() {
    Json change = {{"text", Text()}};
    if (data_.ConsumeBool()) change["range"] = Range();
    Notification("textDocument/didChange",
                 {{"textDocument", {{"uri", Uri()}, {"version", data_.ConsumeIntegral<std::int32_t>()}}},
                  {"contentChanges", Json::array({change})}});
  }

  std::string Uri() { return kUris[data_.ConsumeIntegralInRange<std::size_t>(0, 4)]; }

  std::string Text() { return data_.ConsumeRandomLengthString(4096); }

  Json Position() {
    // Mostly small numbers, sometimes far past any line or column.
    auto coordinate = [this] {
      return data_.ConsumeBool() ? data_.ConsumeIntegralInRange<std::uint32_t>(0, 40)
                                 : data_.ConsumeIntegral<std::uint32_t>();
    };
    const std::uint32_t line = coordinate();
    return {{"line", line}, {"character", coordinate()}};
  }

  Json Range() {
    Json start = Position();
    return {{"start", start}, {"end", Position()}};
  }

  Json Options() {
    return {{"tabSize", data_.ConsumeIntegralInRange<int>(1, 8)}, {"insertSpaces", data_.ConsumeBool()}};
  }

  void Request(const std::string& method, const Json& params) {
    const std::string id = std::string(kIdPrefix) + std::to_string(ids_.size());
    ids_.push_back(id);
    Json message = {{"jsonrpc", "2.0"}, {"id", id}, {"method", method}};
    if (!params.is_null()) message["params"] = params;
    Frame(message.dump(-1, ' ', false, Json::error_handler_t::replace));
  }

  void Notification(const std::string& method, const Json& params) {
    Json message = {{"jsonrpc", "2.0"}, {"method", method}};
    if (!params.is_null()) message["params"] = params;
    Frame(message.dump(-1, ' ', false, Json::error_handler_t::replace));
  }

  void RandomFrame() {
    const std::string body = data_.ConsumeRandomLengthString(512);
    if (!EndsSessionOrReusesId(body)) Frame(body);
  }

  // Whether the server would read the body as "exit" or as a message with
  // one of the session's ids (JSON escapes included, hence the parse).
  static bool EndsSessionOrReusesId(const std::string& body) {
    const Json message = Json::parse(body, nullptr, false);
    if (message.is_discarded() || !message.is_object()) return false;
    const auto method = message.find("method");
    if (method != message.end() && method->is_string() && method->get<std::string>() == "exit") return true;
    const auto id = message.find("id");
    return id != message.end() && id->is_string() && id->get<std::string>().starts_with(kIdPrefix);
  }

  // A header block the server must reject on its own, without losing the
  // frames after it: no Content-Length line and no blank line inside.
  void HeaderWithoutLength() {
    std::string line = data_.ConsumeRandomLengthString(64);
    std::erase_if(line, [](char c) { return c == '\r' || c == '\n'; });
    stream_ += "X-" + line + "\r\n\r\n";
  }

  void Frame(const std::string& body) {
    stream_ += "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  }

  FuzzedDataProvider& data_;
  std::string stream_;
  std::vector<std::string> ids_;
  int steps_ = 0;
};

int MemoryFile(const char* name) {
  const int fd = memfd_create(name, 0);
  if (fd < 0) {
    std::perror("memfd_create");
    std::abort();
  }
  return fd;
}

void WriteAll(int fd, const std::string& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t n = write(fd, bytes.data() + written, bytes.size() - written);
    if (n <= 0) std::abort();
    written += static_cast<std::size_t>(n);
  }
}

std::string ReadAll(int fd) {
  std::string bytes;
  char chunk[65536];
  ssize_t n = 0;
  while ((n = read(fd, chunk, sizeof chunk)) > 0) bytes.append(chunk, static_cast<std::size_t>(n));
  return bytes;
}

// The response ids of the server's output, or a description of a frame that
// is not well formed.
std::string ResponseIds(const std::string& output, std::map<std::string, int>* counts) {
  std::size_t at = 0;
  while (at < output.size()) {
    constexpr std::string_view kHeader = "Content-Length: ";
    if (output.compare(at, kHeader.size(), kHeader) != 0) return "output frame without Content-Length";
    const std::size_t headerEnd = output.find("\r\n\r\n", at);
    if (headerEnd == std::string::npos) return "output header without its end";
    const std::size_t length = std::strtoull(output.c_str() + at + kHeader.size(), nullptr, 10);
    const std::size_t bodyStart = headerEnd + 4;
    if (output.size() - bodyStart < length) return "output frame shorter than its Content-Length";
    const Json message = Json::parse(output.substr(bodyStart, length), nullptr, false);
    if (message.is_discarded() || !message.is_object()) return "output frame is not a JSON object";
    if (message.contains("id") && message["id"].is_string()) ++(*counts)[message["id"].get<std::string>()];
    at = bodyStart + length;
  }
  return "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  Session session(provider);
  session.Build();

  const int input = MemoryFile("lsp-in");
  const int output = MemoryFile("lsp-out");
  WriteAll(input, session.Stream());
  lseek(input, 0, SEEK_SET);
  quill::lsp::RunLanguageServer(input, output);
  lseek(output, 0, SEEK_SET);
  const std::string replies = ReadAll(output);
  close(input);
  close(output);

  std::map<std::string, int> counts;
  const std::string broken = ResponseIds(replies, &counts);
  if (!broken.empty()) {
    std::fprintf(stderr, "language server: %s\n", broken.c_str());
    std::abort();
  }
  for (const std::string& id : session.Ids()) {
    const auto found = counts.find(id);
    const int answers = found == counts.end() ? 0 : found->second;
    if (answers != 1) {
      std::fprintf(stderr, "language server: request %s answered %d times\n", id.c_str(), answers);
      std::abort();
    }
  }
  return 0;
}
