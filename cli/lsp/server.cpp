#include "lsp/server.h"

#include <chrono>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "engine.h"
#include "lsp/documents.h"
#include "lsp/features.h"
#include "lsp/json_rpc.h"

namespace quill::lsp {
namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

// Diagnostics wait until the text has been still for this long, so that a
// burst of keystrokes is linted once, on its latest text.
constexpr auto kLintDelay = std::chrono::milliseconds(150);

namespace error {
constexpr int kParseError = -32700;
constexpr int kInvalidRequest = -32600;
constexpr int kMethodNotFound = -32601;
constexpr int kInvalidParams = -32602;
constexpr int kServerNotInitialized = -32002;
constexpr int kRequestFailed = -32803;
}  // namespace error

struct Document {
  std::string text;
  DocumentKind kind = DocumentKind::kOther;
  std::int64_t version = 0;
};

class Server {
 public:
  Server(int input, int output) : reader_(input), output_(output) {}

  int Run() {
    while (!exited_) {
      bool closed = false;
      std::optional<Frame> frame = reader_.Next(MillisecondsToNextLint(), &closed);
      if (frame) Handle(*frame);
      PublishDueDiagnostics();
      if (closed) break;
    }
    return shutdown_ ? 0 : 1;
  }

 private:
  void Handle(const Frame& frame) {
    if (frame.kind == Frame::Kind::kOversized) {
      return SendError(nullptr, error::kInvalidRequest, "message too large");
    }
    if (frame.kind == Frame::Kind::kBadHeader) {
      return SendError(nullptr, error::kParseError, "message header without Content-Length");
    }
    Json message = Json::parse(frame.body, nullptr, false);
    if (message.is_discarded() || !message.is_object()) {
      return SendError(nullptr, error::kParseError, "message is not a JSON object");
    }
    const Json id = message.contains("id") ? message["id"] : Json();
    const bool isRequest = message.contains("id");
    if (!message.contains("method") || !message["method"].is_string()) {
      if (isRequest && !message.contains("result") && !message.contains("error")) {
        SendError(id, error::kInvalidRequest, "request without method");
      }
      return;  // a response to something we never asked, or junk
    }
    const std::string method = message["method"].get<std::string>();
    const Json params = message.contains("params") ? message["params"] : Json::object();
    try {
      Dispatch(method, params, id, isRequest);
    } catch (const Json::exception& bad) {
      if (isRequest) SendError(id, error::kInvalidParams, std::string("invalid params: ") + bad.what());
    }
  }

  void Dispatch(const std::string& method, const Json& params, const Json& id, bool isRequest) {
    if (method == "initialize") return Reply(id, Initialize());
    if (method == "exit") {
      exited_ = true;
      return;
    }
    if (!initialized_) {
      if (isRequest) SendError(id, error::kServerNotInitialized, "initialize first");
      return;
    }
    if (shutdown_) {
      if (isRequest) SendError(id, error::kInvalidRequest, "the server is shutting down");
      return;
    }
    if (method == "initialized") return;
    if (method == "shutdown") {
      shutdown_ = true;
      return Reply(id, nullptr);
    }
    if (method == "textDocument/didOpen") return DidOpen(params);
    if (method == "textDocument/didChange") return DidChange(params);
    if (method == "textDocument/didClose") return DidClose(params);
    if (method == "textDocument/formatting") return Format(id, params, std::nullopt);
    if (method == "textDocument/rangeFormatting") {
      const Json& range = params.at("range");
      return Format(id, params,
                    LineRange{range.at("start").at("line").get<std::uint32_t>(),
                              range.at("end").at("line").get<std::uint32_t>()});
    }
    if (method == "textDocument/semanticTokens/full") return Tokens(id, params, std::nullopt);
    if (method == "textDocument/semanticTokens/range") {
      const Json& range = params.at("range");
      return Tokens(id, params,
                    LineRange{range.at("start").at("line").get<std::uint32_t>(),
                              range.at("end").at("line").get<std::uint32_t>()});
    }
    if (isRequest) SendError(id, error::kMethodNotFound, "unknown method " + method);
  }

  Json Initialize() {
    initialized_ = true;
    return {
        {"capabilities",
         {
             {"positionEncoding", "utf-16"},
             {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
             {"documentFormattingProvider", true},
             {"documentRangeFormattingProvider", true},
             {"semanticTokensProvider", {{"legend", SemanticTokensLegend()}, {"full", true}, {"range", true}}},
         }},
        {"serverInfo", {{"name", "quill"}, {"version", cli::EngineVersion()}}},
    };
  }

  void DidOpen(const Json& params) {
    const Json& item = params.at("textDocument");
    const std::string uri = item.at("uri").get<std::string>();
    Document& doc = documents_[uri];
    doc.text = item.at("text").get<std::string>();
    doc.kind = KindOf(item.value("languageId", ""), uri);
    doc.version = item.value("version", std::int64_t{0});
    ScheduleLint(uri, doc);
  }

  void DidChange(const Json& params) {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    auto found = documents_.find(uri);
    if (found == documents_.end()) return;
    Document& doc = found->second;
    for (const Json& change : params.at("contentChanges")) {
      if (!change.contains("range")) {
        doc.text = change.at("text").get<std::string>();
        continue;
      }
      const LineIndex lines(doc.text);
      const Json& range = change.at("range");
      std::size_t from = lines.Offset(PositionFrom(range.at("start")));
      std::size_t to = lines.Offset(PositionFrom(range.at("end")));
      if (to < from) std::swap(from, to);
      doc.text.replace(from, to - from, change.at("text").get<std::string>());
    }
    doc.version = params.at("textDocument").value("version", doc.version);
    ScheduleLint(uri, doc);
  }

  void DidClose(const Json& params) {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    auto found = documents_.find(uri);
    if (found == documents_.end()) return;
    const bool wasVerilog = found->second.kind == DocumentKind::kVerilog;
    documents_.erase(found);
    pendingLint_.erase(uri);
    if (wasVerilog) Notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}});
  }

  void Format(const Json& id, const Json& params, std::optional<LineRange> range) {
    const Document* doc = Find(params);
    if (doc == nullptr || doc->kind != DocumentKind::kVerilog) return Reply(id, Json::array());
    FormattingResult result = FormattingEdits(doc->text, range);
    if (!result.refusal.empty()) {
      Notify("window/showMessage", {{"type", 2}, {"message", result.refusal}});
      return SendError(id, error::kRequestFailed, result.refusal);
    }
    Reply(id, result.edits);
  }

  void Tokens(const Json& id, const Json& params, std::optional<LineRange> range) {
    const Document* doc = Find(params);
    if (doc == nullptr || doc->kind != DocumentKind::kConstraint) return Reply(id, {{"data", Json::array()}});
    Reply(id, SemanticTokens(doc->text, range));
  }

  const Document* Find(const Json& params) const {
    auto found = documents_.find(params.at("textDocument").at("uri").get<std::string>());
    return found == documents_.end() ? nullptr : &found->second;
  }

  static Position PositionFrom(const Json& position) {
    return {position.at("line").get<std::uint32_t>(), position.at("character").get<std::uint32_t>()};
  }

  void ScheduleLint(const std::string& uri, const Document& doc) {
    if (doc.kind == DocumentKind::kVerilog) pendingLint_[uri] = Clock::now() + kLintDelay;
  }

  int MillisecondsToNextLint() const {
    if (pendingLint_.empty()) return -1;
    auto next = Clock::time_point::max();
    for (const auto& [uri, due] : pendingLint_) next = std::min(next, due);
    auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(next - Clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(0, wait));
  }

  void PublishDueDiagnostics() {
    const auto now = Clock::now();
    for (auto it = pendingLint_.begin(); it != pendingLint_.end();) {
      if (it->second > now) {
        ++it;
        continue;
      }
      auto doc = documents_.find(it->first);
      if (doc != documents_.end()) {
        Notify("textDocument/publishDiagnostics", {{"uri", it->first},
                                                   {"version", doc->second.version},
                                                   {"diagnostics", Diagnostics(it->first, doc->second.text)}});
      }
      it = pendingLint_.erase(it);
    }
  }

  void Reply(const Json& id, const Json& result) { Send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}}); }

  void SendError(const Json& id, int code, const std::string& message) {
    Send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", message}}}});
  }

  void Notify(const std::string& method, const Json& params) {
    Send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
  }

  void Send(const Json& message) {
    // Engine text may hold invalid UTF-8; replace it rather than fail.
    if (!WriteFrame(output_, message.dump(-1, ' ', false, Json::error_handler_t::replace))) exited_ = true;
  }

  FrameReader reader_;
  int output_;
  std::map<std::string, Document> documents_;
  std::map<std::string, Clock::time_point> pendingLint_;
  bool initialized_ = false;
  bool shutdown_ = false;
  bool exited_ = false;
};

}  // namespace

int RunLanguageServer(int inputFd, int outputFd) { return Server(inputFd, outputFd).Run(); }

}  // namespace quill::lsp
