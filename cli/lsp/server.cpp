#include "lsp/server.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "engine.h"
#include "lsp/documents.h"
#include "lsp/features.h"
#include "lsp/json_rpc.h"
#include "lsp/navigation.h"
#include "lsp/workspace_index.h"

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
constexpr int kInternalError = -32603;
constexpr int kServerNotInitialized = -32002;
constexpr int kRequestFailed = -32803;
}  // namespace error

// workspace/symbol answers at most this many symbols.
constexpr std::size_t kMaxWorkspaceSymbols = 500;
// How long the indexer waits for the client to accept its progress token.
constexpr auto kProgressTokenWait = std::chrono::seconds(5);
constexpr std::string_view kProgressToken = "quill/indexing";
constexpr std::string_view kProgressCreateId = "quill/progress-create";

struct Document {
  std::string text;
  DocumentKind kind = DocumentKind::kOther;
  std::int64_t version = 0;
  FilePtr parsed;  // the structure of `text`; null until asked for after a change
};

// A member of a JSON object, or null when it is not one or lacks the key.
const Json* Member(const Json& object, std::string_view key) {
  if (!object.is_object()) return nullptr;
  auto found = object.find(key);
  return found == object.end() ? nullptr : &*found;
}

// A line or column: negative numbers clamp to 0, huge ones to the largest.
std::optional<std::uint32_t> Coordinate(const Json* value) {
  constexpr auto kMax = std::numeric_limits<std::uint32_t>::max();
  if (value == nullptr) return std::nullopt;
  if (value->is_number_unsigned()) return static_cast<std::uint32_t>(std::min<std::uint64_t>(value->get<std::uint64_t>(), kMax));
  if (value->is_number_integer()) {
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(value->get<std::int64_t>(), 0, kMax));
  }
  if (value->is_number_float()) {
    const double d = value->get<double>();
    if (!(d >= 0)) return 0u;
    return d >= kMax ? kMax : static_cast<std::uint32_t>(d);
  }
  return std::nullopt;
}

std::optional<Position> ReadPosition(const Json* position) {
  if (position == nullptr) return std::nullopt;
  auto line = Coordinate(Member(*position, "line")), character = Coordinate(Member(*position, "character"));
  if (!line || !character) return std::nullopt;
  return Position{*line, *character};
}

// The lines a range covers; an end at column 0 of a later line stops before it.
std::optional<LineRange> ReadLineRange(const Json* range) {
  if (range == nullptr) return std::nullopt;
  auto start = ReadPosition(Member(*range, "start")), end = ReadPosition(Member(*range, "end"));
  if (!start || !end) return std::nullopt;
  if (end->line < start->line) std::swap(start, end);
  std::uint32_t last = end->line;
  if (end->character == 0 && end->line > start->line) --last;
  return LineRange{start->line, last};
}

class Server {
 public:
  Server(int input, int output) : reader_(input), output_(output) {}
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  ~Server() {
    keepIndexing_ = false;
    {
      std::lock_guard lock(progressMutex_);
      progressAnswered_ = true;
    }
    progressAnswer_.notify_all();
    if (indexer_.joinable()) indexer_.join();
  }

  int Run() {
    while (!exited_ && !outputGone_) {
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
      if (isRequest && id.is_string() && id.get<std::string>() == kProgressCreateId) {
        std::lock_guard lock(progressMutex_);
        progressAnswered_ = true;
        progressAccepted_ = message.contains("result");
        progressAnswer_.notify_all();
      }
      return;  // a response to something we asked, or junk
    }
    const std::string method = message["method"].get<std::string>();
    const Json params = message.contains("params") ? message["params"] : Json::object();
    try {
      Dispatch(method, params, id, isRequest);
    } catch (const Json::exception& bad) {
      if (isRequest) SendError(id, error::kInvalidParams, std::string("invalid params: ") + bad.what());
    } catch (const std::exception& failure) {
      // A failing handler answers its request; the server goes on.
      if (isRequest) SendError(id, error::kInternalError, method + " failed: " + failure.what());
    }
  }

  void Dispatch(const std::string& method, const Json& params, const Json& id, bool isRequest) {
    if (method == "initialize") return Reply(id, Initialize(params));
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
    if (method == "initialized") return Initialized();
    if (method == "shutdown") {
      shutdown_ = true;
      return Reply(id, nullptr);
    }
    if (method == "textDocument/didOpen") return DidOpen(params);
    if (method == "textDocument/didChange") return DidChange(params);
    if (method == "textDocument/didClose") return DidClose(params);
    if (method == "textDocument/didSave") return DidSave(params);
    if (method == "workspace/didChangeWatchedFiles") return DidChangeWatchedFiles(params);
    if (method == "textDocument/formatting") return Format(id, params, std::nullopt);
    if (method == "textDocument/rangeFormatting") {
      const std::optional<LineRange> range = ReadLineRange(Member(params, "range"));
      if (!range) return Reply(id, Json::array());
      return Format(id, params, range);
    }
    if (method == "textDocument/semanticTokens/full") return Tokens(id, params, std::nullopt);
    if (method == "textDocument/semanticTokens/range") {
      const std::optional<LineRange> range = ReadLineRange(Member(params, "range"));
      if (!range) return Reply(id, {{"data", Json::array()}});
      return Tokens(id, params, range);
    }
    if (isRequest && Navigate(method, params, id)) return;
    if (isRequest) SendError(id, error::kMethodNotFound, "unknown method " + method);
  }

  Json Initialize(const Json& params) {
    initialized_ = true;
    ReadClientSetup(params);
    return {
        {"capabilities",
         {
             {"positionEncoding", "utf-16"},
             {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", true}}},
             {"documentFormattingProvider", true},
             {"documentRangeFormattingProvider", true},
             {"semanticTokensProvider", {{"legend", SemanticTokensLegend()}, {"full", true}, {"range", true}}},
             {"documentSymbolProvider", true},
             {"workspaceSymbolProvider", true},
             {"definitionProvider", true},
             {"referencesProvider", true},
             {"hoverProvider", true},
             {"documentHighlightProvider", true},
             {"foldingRangeProvider", true},
             {"codeActionProvider", {{"codeActionKinds", {"quickfix"}}}},
             {"workspace", {{"workspaceFolders", {{"supported", true}}}}},
         }},
        {"serverInfo", {{"name", "quill"}, {"version", cli::EngineVersion()}}},
    };
  }

  void ReadClientSetup(const Json& params) {
    auto flag = [&params](std::initializer_list<std::string_view> path) {
      const Json* at = &params;
      for (std::string_view key : path) {
        at = Member(*at, key);
        if (at == nullptr) return false;
      }
      return at->is_boolean() && at->get<bool>();
    };
    clientCreatesProgress_ = flag({"capabilities", "window", "workDoneProgress"});
    clientWatchesFiles_ = flag({"capabilities", "workspace", "didChangeWatchedFiles", "dynamicRegistration"});
    if (const Json* folders = Member(params, "workspaceFolders"); folders != nullptr && folders->is_array()) {
      for (const Json& folder : *folders) {
        const Json* uri = Member(folder, "uri");
        if (uri == nullptr || !uri->is_string()) continue;
        if (auto path = UriToPath(uri->get<std::string>())) folders_.push_back(*path);
      }
    }
    if (folders_.empty()) {
      if (const Json* root = Member(params, "rootUri"); root != nullptr && root->is_string()) {
        if (auto path = UriToPath(root->get<std::string>())) folders_.push_back(*path);
      } else if (const Json* rootPath = Member(params, "rootPath"); rootPath != nullptr && rootPath->is_string()) {
        folders_.push_back(rootPath->get<std::string>());
      }
    }
  }

  // After the handshake: watch the Verilog files and index the folders in
  // the background.
  void Initialized() {
    if (clientWatchesFiles_) {
      Send({{"jsonrpc", "2.0"},
            {"id", "quill/watch"},
            {"method", "client/registerCapability"},
            {"params",
             {{"registrations",
               {{{"id", "quill/watch-verilog"},
                 {"method", "workspace/didChangeWatchedFiles"},
                 {"registerOptions", {{"watchers", {{{"globPattern", "**/*.{v,sv,vh,svh}"}}}}}}}}}}}});
    }
    if (folders_.empty() || indexer_.joinable()) return;
    if (clientCreatesProgress_) {
      Send({{"jsonrpc", "2.0"},
            {"id", kProgressCreateId},
            {"method", "window/workDoneProgress/create"},
            {"params", {{"token", kProgressToken}}}});
    }
    indexer_ = std::thread([this] { IndexFolders(); });
  }

  // Runs on the indexer thread: reads every Verilog file of the folders.
  void IndexFolders() {
    bool progress = false;
    if (clientCreatesProgress_) {
      std::unique_lock lock(progressMutex_);
      progressAnswer_.wait_for(lock, kProgressTokenWait, [this] { return progressAnswered_; });
      progress = progressAccepted_;
    }
    if (progress) {
      Notify("$/progress", {{"token", kProgressToken},
                            {"value", {{"kind", "begin"}, {"title", "Indexing Verilog files"}, {"percentage", 0}}}});
    }
    const std::vector<std::string> paths = ListVerilogFiles(folders_, keepIndexing_);
    for (std::size_t k = 0; k < paths.size() && keepIndexing_; ++k) {
      if (std::optional<std::string> text = ReadFileText(paths[k])) {
        index_.SetDisk(std::make_shared<IndexedFile>(PathToFileUri(paths[k]), std::move(*text)));
      }
      if (progress && (k + 1) % 200 == 0) {
        Notify("$/progress", {{"token", kProgressToken},
                              {"value", {{"kind", "report"},
                                         {"message", std::to_string(k + 1) + "/" + std::to_string(paths.size())},
                                         {"percentage", (k + 1) * 100 / paths.size()}}}});
      }
    }
    if (progress) {
      Notify("$/progress", {{"token", kProgressToken},
                            {"value", {{"kind", "end"}, {"message", std::to_string(paths.size()) + " files"}}}});
    }
  }

  void DidOpen(const Json& params) {
    const Json& item = params.at("textDocument");
    const std::string uri = item.at("uri").get<std::string>();
    Document& doc = documents_[uri];
    doc.text = item.at("text").get<std::string>();
    doc.kind = KindOf(item.value("languageId", ""), uri);
    doc.version = item.value("version", std::int64_t{0});
    doc.parsed = nullptr;
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
    doc.parsed = nullptr;
    ScheduleLint(uri, doc);
  }

  void DidClose(const Json& params) {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    auto found = documents_.find(uri);
    if (found == documents_.end()) return;
    const bool wasVerilog = found->second.kind == DocumentKind::kVerilog;
    documents_.erase(found);
    index_.CloseOpen(uri);
    pendingLint_.erase(uri);
    if (wasVerilog) Notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}});
  }

  void DidSave(const Json& params) {
    const Json* item = Member(params, "textDocument");
    const Json* uri = item != nullptr ? Member(*item, "uri") : nullptr;
    if (uri != nullptr && uri->is_string()) ReadFromDisk(uri->get<std::string>(), false);
  }

  void DidChangeWatchedFiles(const Json& params) {
    const Json* changes = Member(params, "changes");
    if (changes == nullptr || !changes->is_array()) return;
    for (const Json& change : *changes) {
      const Json* uri = Member(change, "uri");
      const Json* type = Member(change, "type");
      if (uri == nullptr || !uri->is_string()) continue;
      ReadFromDisk(uri->get<std::string>(), type != nullptr && type->is_number() && type->get<int>() == 3);
    }
  }

  // Brings the index's disk copy of a Verilog file up to date.
  void ReadFromDisk(const std::string& uri, bool deleted) {
    const std::optional<std::string> path = UriToPath(uri);
    if (!path || !IsVerilogPath(*path)) return;
    std::optional<std::string> text = deleted ? std::nullopt : ReadFileText(*path);
    if (!text) return index_.RemoveDisk(uri);
    index_.SetDisk(std::make_shared<IndexedFile>(uri, std::move(*text)));
  }

  // The structure of a Verilog document: the open text, else the indexed
  // file; null for other documents.
  FilePtr VerilogFile(const Json& params) {
    const Json* item = Member(params, "textDocument");
    const Json* uri = item != nullptr ? Member(*item, "uri") : nullptr;
    if (uri == nullptr || !uri->is_string()) return nullptr;
    const std::string name = uri->get<std::string>();
    auto found = documents_.find(name);
    if (found == documents_.end()) return IsVerilogPath(name) ? index_.Find(name) : nullptr;
    return Parsed(name, found->second);
  }

  FilePtr Parsed(const std::string& uri, Document& doc) {
    if (doc.kind != DocumentKind::kVerilog) return nullptr;
    if (!doc.parsed) {
      doc.parsed = std::make_shared<IndexedFile>(uri, doc.text);
      index_.SetOpen(doc.parsed);
    }
    return doc.parsed;
  }

  // Every file of the index, with the open documents' latest text.
  std::vector<FilePtr> AllFiles() {
    for (auto& [uri, doc] : documents_) Parsed(uri, doc);
    return index_.Files();
  }

  // The navigation requests; false for any other method.
  bool Navigate(const std::string& method, const Json& params, const Json& id) {
    if (method == "workspace/symbol") {
      const Json* query = Member(params, "query");
      Reply(id, WorkspaceSymbols(AllFiles(), query != nullptr && query->is_string() ? query->get<std::string>() : "",
                                 kMaxWorkspaceSymbols));
      return true;
    }
    const bool known = method == "textDocument/documentSymbol" || method == "textDocument/foldingRange" ||
                       method == "textDocument/codeAction" || method == "textDocument/definition" ||
                       method == "textDocument/references" || method == "textDocument/hover" ||
                       method == "textDocument/documentHighlight";
    if (!known) return false;
    const Json empty = method == "textDocument/hover" ? Json() : Json::array();
    const FilePtr file = VerilogFile(params);
    if (!file) {
      Reply(id, empty);
      return true;
    }
    if (method == "textDocument/documentSymbol") {
      Reply(id, DocumentSymbols(*file));
      return true;
    }
    if (method == "textDocument/foldingRange") {
      Reply(id, FoldingRanges(*file));
      return true;
    }
    if (method == "textDocument/codeAction") {
      const std::optional<LineRange> range = ReadLineRange(Member(params, "range"));
      const Json* context = Member(params, "context");
      const Json* given = context != nullptr ? Member(*context, "diagnostics") : nullptr;
      Json diagnostics = given != nullptr && given->is_array() ? *given : Json::array();
      if (diagnostics.empty() && range) diagnostics = Diagnostics(file->uri, file->text);
      Reply(id, range ? CodeActions(*file, *range, diagnostics) : Json::array());
      return true;
    }
    const std::optional<Position> position = ReadPosition(Member(params, "position"));
    if (!position) {
      Reply(id, empty);
      return true;
    }
    const std::vector<FilePtr> files = AllFiles();
    if (method == "textDocument/definition") {
      Reply(id, Definition(*file, *position, files));
    } else if (method == "textDocument/hover") {
      Reply(id, Hover(*file, *position, files));
    } else if (method == "textDocument/documentHighlight") {
      Reply(id, DocumentHighlights(*file, *position, files));
    } else {
      const Json* context = Member(params, "context");
      const Json* include = context != nullptr ? Member(*context, "includeDeclaration") : nullptr;
      Reply(id, References(*file, *position, files, include != nullptr && include->is_boolean() && include->get<bool>()));
    }
    return true;
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

  // Called from the main thread and the indexer.
  void Send(const Json& message) {
    // Engine text may hold invalid UTF-8; replace it rather than fail.
    const std::string body = message.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::lock_guard lock(sendMutex_);
    if (!WriteFrame(output_, body)) outputGone_ = true;
  }

  FrameReader reader_;
  int output_;
  std::map<std::string, Document> documents_;
  std::map<std::string, Clock::time_point> pendingLint_;
  bool initialized_ = false;
  bool shutdown_ = false;
  bool exited_ = false;
  std::atomic<bool> outputGone_ = false;
  std::mutex sendMutex_;

  WorkspaceIndex index_;
  std::vector<std::string> folders_;
  bool clientCreatesProgress_ = false;
  bool clientWatchesFiles_ = false;
  std::thread indexer_;
  std::atomic<bool> keepIndexing_ = true;
  std::mutex progressMutex_;
  std::condition_variable progressAnswer_;
  bool progressAnswered_ = false;
  bool progressAccepted_ = false;
};

}  // namespace

int RunLanguageServer(int inputFd, int outputFd) { return Server(inputFd, outputFd).Run(); }

}  // namespace quill::lsp
