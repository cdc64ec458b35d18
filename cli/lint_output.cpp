#include "lint_output.h"

#include <map>
#include <nlohmann/json.hpp>

#include "lint/check_table.h"

namespace quill::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kExceptionPrefix = R"([{"severity":"error","line":0,"check":"cpp-exception","message":")";
constexpr std::string_view kExceptionSuffix = R"("}])";

// The project's documentation, which describes every check.
constexpr std::string_view kInformationUri = "https://quill-hdl.github.io/quill/";
constexpr std::string_view kChecksPage = "https://quill-hdl.github.io/quill/checks.html#";

// A cursor over the report with the few JSON pieces the findings use.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  std::size_t Position() const { return pos_; }
  bool AtEnd() {
    SkipSpace();
    return pos_ == text_.size();
  }
  bool Take(char c) {
    SkipSpace();
    if (pos_ < text_.size() && text_[pos_] == c) {
      ++pos_;
      return true;
    }
    return false;
  }
  bool Peek(char c) {
    SkipSpace();
    return pos_ < text_.size() && text_[pos_] == c;
  }

  // A string with the usual escapes; other bytes, control bytes included,
  // are taken as they are.
  std::optional<std::string> String() {
    if (!Take('"')) return std::nullopt;
    std::string value;
    while (pos_ < text_.size()) {
      const char c = text_[pos_++];
      if (c == '"') return value;
      if (c != '\\') {
        value.push_back(c);
        continue;
      }
      if (pos_ == text_.size()) return std::nullopt;
      const char e = text_[pos_++];
      switch (e) {
        case 'n':
          value.push_back('\n');
          break;
        case 't':
          value.push_back('\t');
          break;
        case 'r':
          value.push_back('\r');
          break;
        case 'b':
          value.push_back('\b');
          break;
        case 'f':
          value.push_back('\f');
          break;
        case 'u':
          if (!Unicode(&value)) return std::nullopt;
          break;
        default:
          value.push_back(e);
          break;
      }
    }
    return std::nullopt;
  }

  std::optional<int64_t> Integer() {
    SkipSpace();
    bool negative = false;
    if (pos_ < text_.size() && text_[pos_] == '-') negative = true, ++pos_;
    const std::size_t start = pos_;
    int64_t value = 0;
    while (pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9') {
      if (value < (int64_t{1} << 40)) value = value * 10 + (text_[pos_] - '0');
      ++pos_;
    }
    if (pos_ == start) return std::nullopt;
    return negative ? -value : value;
  }

 private:
  void SkipSpace() {
    while (pos_ < text_.size() &&
           (text_[pos_] == ' ' || text_[pos_] == '\t' || text_[pos_] == '\n' || text_[pos_] == '\r')) {
      ++pos_;
    }
  }

  bool Unicode(std::string* value) {
    if (text_.size() - pos_ < 4) return false;
    uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
      const char h = text_[pos_++];
      code <<= 4;
      if (h >= '0' && h <= '9') {
        code |= static_cast<uint32_t>(h - '0');
      } else if (h >= 'a' && h <= 'f') {
        code |= static_cast<uint32_t>(h - 'a' + 10);
      } else if (h >= 'A' && h <= 'F') {
        code |= static_cast<uint32_t>(h - 'A' + 10);
      } else {
        return false;
      }
    }
    if (code >= 0xD800 && code <= 0xDFFF) code = 0xFFFD;
    if (code < 0x80) {
      value->push_back(static_cast<char>(code));
    } else if (code < 0x800) {
      value->push_back(static_cast<char>(0xC0 | (code >> 6)));
      value->push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
      value->push_back(static_cast<char>(0xE0 | (code >> 12)));
      value->push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
      value->push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
    return true;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
};

std::optional<Finding> ParseFinding(Reader* reader, std::string_view report) {
  const std::size_t start = reader->Position();
  if (!reader->Take('{')) return std::nullopt;
  Finding finding;
  if (!reader->Take('}')) {
    do {
      const std::optional<std::string> key = reader->String();
      if (!key || !reader->Take(':')) return std::nullopt;
      if (*key == "line") {
        const std::optional<int64_t> line = reader->Integer();
        if (!line) return std::nullopt;
        finding.line = *line;
        continue;
      }
      std::optional<std::string> value = reader->String();
      if (!value) return std::nullopt;
      if (*key == "severity") finding.severity = std::move(*value);
      if (*key == "check") finding.check = std::move(*value);
      if (*key == "message") finding.message = std::move(*value);
    } while (reader->Take(','));
    if (!reader->Take('}')) return std::nullopt;
  }
  finding.raw = std::string(report.substr(start, reader->Position() - start));
  // The object started after any blanks that Take('{') skipped.
  const std::size_t brace = finding.raw.find('{');
  finding.raw.erase(0, brace);
  return finding;
}

std::optional<std::vector<Finding>> ParseArray(std::string_view report) {
  Reader reader(report);
  if (!reader.Take('[')) return std::nullopt;
  std::vector<Finding> findings;
  if (!reader.Take(']')) {
    do {
      std::optional<Finding> finding = ParseFinding(&reader, report);
      if (!finding) return std::nullopt;
      findings.push_back(std::move(*finding));
    } while (reader.Take(','));
    if (!reader.Take(']')) return std::nullopt;
  }
  if (!reader.AtEnd()) return std::nullopt;
  return findings;
}

std::string WithoutControlBytes(std::string_view text) {
  std::string clean(text);
  for (char& c : clean) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  return clean;
}

int64_t OneBasedLine(int64_t line) {
  return line < 0 ? 1 : line + 1;
}

bool IsUnreserved(unsigned char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~' || c == '/';
}

}  // namespace

std::optional<std::vector<Finding>> ParseFindings(std::string_view report) {
  if (std::optional<std::vector<Finding>> findings = ParseArray(report)) return findings;
  // The engine inserts an exception's text into its fallback unescaped.
  if (report.size() >= kExceptionPrefix.size() + kExceptionSuffix.size() && report.starts_with(kExceptionPrefix) &&
      report.ends_with(kExceptionSuffix)) {
    Finding finding;
    finding.severity = "error";
    finding.check = "cpp-exception";
    finding.message = std::string(
        report.substr(kExceptionPrefix.size(), report.size() - kExceptionPrefix.size() - kExceptionSuffix.size()));
    finding.raw = std::string(report.substr(1, report.size() - 2));
    return std::vector<Finding>{std::move(finding)};
  }
  return std::nullopt;
}

bool IsErrorSeverity(std::string_view severity) {
  return severity != "warning";
}

std::string FormatTextFinding(std::string_view path, const Finding& finding, bool color) {
  const std::string location = std::string(path) + ":" + std::to_string(OneBasedLine(finding.line)) + ":1:";
  const std::string severity = WithoutControlBytes(finding.severity) + ":";
  const std::string message = WithoutControlBytes(finding.message);
  const std::string check = "[" + WithoutControlBytes(finding.check) + "]";
  if (!color) return location + " " + severity + " " + message + " " + check + "\n";
  const char* severityColor = IsErrorSeverity(finding.severity) ? "\x1b[1;31m" : "\x1b[1;35m";
  return "\x1b[1m" + location + "\x1b[0m " + severityColor + severity + "\x1b[0m \x1b[1m" + message + "\x1b[0m " +
         check + "\n";
}

std::string FormatJsonArray(const std::vector<Finding>& findings, std::size_t count) {
  std::string text = "[";
  for (std::size_t i = 0; i < count && i < findings.size(); ++i) {
    if (i > 0) text += ",";
    text += findings[i].raw;
  }
  return text + "]";
}

std::string PathToUri(std::string_view path) {
  while (path.starts_with("./")) path.remove_prefix(2);
  std::string uri = path.starts_with("/") ? "file://" : "";
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsUnreserved(byte)) {
      uri.push_back(c);
    } else {
      uri.push_back('%');
      uri.push_back(kHex[byte >> 4]);
      uri.push_back(kHex[byte & 0x0F]);
    }
  }
  return uri;
}

std::string FormatGithubFinding(std::string_view path, const Finding& finding) {
  // Data: %, CR and LF are escaped; property values also ':' and ','.
  auto escape = [](std::string_view text, bool property) {
    std::string out;
    for (char c : text) {
      if (c == '%') out += "%25";
      else if (c == '\r') out += "%0D";
      else if (c == '\n') out += "%0A";
      else if (property && c == ':') out += "%3A";
      else if (property && c == ',') out += "%2C";
      else out.push_back(c);
    }
    return out;
  };
  return std::string("::") + (IsErrorSeverity(finding.severity) ? "error" : "warning") +
         " file=" + escape(path, true) + ",line=" + std::to_string(OneBasedLine(finding.line)) +
         ",title=" + escape(finding.check, true) + "::" + escape(finding.message, false) + "\n";
}

std::string FormatJsonDocument(const std::vector<FileFindings>& files) {
  std::string text = "[";
  bool first = true;
  for (const FileFindings& file : files) {
    for (const Finding& finding : file.findings) {
      const Json object = {{"path", file.path},
                           {"line", OneBasedLine(finding.line)},
                           {"check", finding.check},
                           {"severity", finding.severity},
                           {"message", finding.message}};
      text += (first ? "\n  " : ",\n  ") + object.dump(-1, ' ', false, Json::error_handler_t::replace);
      first = false;
    }
  }
  return text + (first ? "]\n" : "\n]\n");
}

std::string FormatSummary(std::size_t warnings, std::size_t errors, std::size_t files) {
  const std::size_t total = warnings + errors;
  if (total == 0) return "No findings.\n";
  auto count = [](std::size_t n, std::string_view word) {
    return std::to_string(n) + " " + std::string(word) + (n == 1 ? "" : "s");
  };
  return count(total, "finding") + " in " + count(files, "file") + " (" + count(warnings, "warning") + ", " +
         count(errors, "error") + ")\n";
}

std::string NumericVersion(std::string_view engineVersion) {
  const std::size_t digit = engineVersion.find_first_of("0123456789");
  if (digit == std::string_view::npos) return std::string(engineVersion);
  std::size_t end = digit;
  while (end < engineVersion.size() &&
         ((engineVersion[end] >= '0' && engineVersion[end] <= '9') || engineVersion[end] == '.')) {
    ++end;
  }
  return std::string(engineVersion.substr(digit, end - digit));
}

std::string CheckHelpUri(std::string_view check) {
  return std::string(kChecksPage) + std::string(check);
}

namespace {

// SARIF messages are sentences: they end with a period.
std::string Sentence(std::string_view text) {
  std::string sentence(text);
  if (sentence.empty() || (sentence.back() != '.' && sentence.back() != '!' && sentence.back() != '?')) {
    sentence.push_back('.');
  }
  return sentence;
}

// "multi-driver" -> "MultiDriver": SARIF's rule names are identifiers.
std::string RuleName(std::string_view id) {
  std::string name;
  bool upper = true;
  for (char c : id) {
    if (c == '-' || c == '_' || c == ' ') {
      upper = true;
      continue;
    }
    name.push_back(upper && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c);
    upper = false;
  }
  return name;
}

Json SarifRule(std::string_view id, std::string_view summary, std::string_view description, std::string_view level) {
  Json rule = {{"id", id},
               {"shortDescription", {{"text", Sentence(summary)}}},
               {"fullDescription", {{"text", Sentence(description)}}},
               {"helpUri", CheckHelpUri(id)},
               {"help", {{"text", Sentence(description)}}},
               {"defaultConfiguration", {{"level", level}}}};
  // SARIF wants a name only where it differs from the id, letter case aside
  // ("latch" has none; "multi-driver" is "MultiDriver").
  const std::string name = RuleName(id);
  bool sameAsId = name.size() == id.size();
  for (std::size_t i = 0; sameAsId && i < name.size(); ++i) {
    sameAsId = (static_cast<unsigned char>(name[i]) | 0x20u) == (static_cast<unsigned char>(id[i]) | 0x20u);
  }
  if (!sameAsId) rule["name"] = name;
  return rule;
}

}  // namespace

std::string FormatSarif(const std::vector<FileFindings>& files, std::string_view engineVersion) {
  Json rules = Json::array();
  std::map<std::string, std::size_t, std::less<>> ruleIndex;
  for (const CheckInfo& check : kCheckTable) {
    ruleIndex.emplace(std::string(check.name), rules.size());
    rules.push_back(SarifRule(check.name, check.summary, check.description, SeverityName(check.severity)));
  }

  Json results = Json::array();
  for (const FileFindings& file : files) {
    const std::string uri = PathToUri(file.path);
    for (const Finding& finding : file.findings) {
      if (ruleIndex.find(finding.check) == ruleIndex.end()) {
        // A name outside the table (the engine's failure report).
        ruleIndex.emplace(finding.check, rules.size());
        const std::string text = "Findings named '" + finding.check + "'";
        rules.push_back(SarifRule(finding.check, text, text, "error"));
      }
      results.push_back(Json{
          {"ruleId", finding.check},
          {"ruleIndex", ruleIndex.find(finding.check)->second},
          {"level", IsErrorSeverity(finding.severity) ? "error" : "warning"},
          {"message", {{"text", Sentence(finding.message)}}},
          {"locations", Json::array({{{"physicalLocation",
                                       {{"artifactLocation", {{"uri", uri}}},
                                        {"region", {{"startLine", OneBasedLine(finding.line)}}}}}}})},
      });
    }
  }
  const std::string version = NumericVersion(engineVersion);
  Json driver = {{"name", "quill"},
                 {"version", version},
                 {"semanticVersion", version.find('.') == version.rfind('.') ? version + ".0" : version},
                 {"informationUri", kInformationUri},
                 {"rules", rules}};
  Json log = {
      {"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
      {"version", "2.1.0"},
      {"runs", Json::array({{{"tool", {{"driver", driver}}}, {"results", results}}})},
  };
  // Messages and paths may hold bytes that are not UTF-8; they are replaced
  // rather than failing the whole log.
  return log.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quill::cli
