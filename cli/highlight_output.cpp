#include "highlight_output.h"

#include <array>
#include <nlohmann/json.hpp>

#include "quill.h"

namespace quill::cli {
namespace {

using Json = nlohmann::ordered_json;

struct ClassStyle {
  std::string_view name;
  std::string_view color;  // SGR parameters; empty for no colour
};

// Indexed by QuillTokenClass.
constexpr std::array<ClassStyle, 11> kStyles = {{
    {"plain", ""},
    {"comment", "90"},       // grey
    {"string", "32"},        // green
    {"keyword", "34"},       // blue
    {"property", "36"},      // cyan
    {"io-standard", "33"},   // yellow
    {"pin-name", "95"},      // light magenta
    {"port-name", "96"},     // light cyan
    {"brace", "91"},         // light red
    {"tool-command", "35"},  // magenta
    {"flow-command", "94"},  // light blue
}};
static_assert(QUILL_TOKEN_FLOW_COMMAND + 1 == kStyles.size());

std::string_view ColorOf(unsigned char code) {
  return code < kStyles.size() ? kStyles[code].color : "";
}

}  // namespace

std::string_view ClassName(unsigned char code) {
  return code < kStyles.size() ? kStyles[code].name : "unknown";
}

std::string RenderAnsi(std::string_view text, const std::vector<unsigned char>& classes) {
  std::string out;
  out.reserve(text.size() * 2);
  std::string_view open;  // the colour in force, "" for none
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const std::string_view wanted = c == '\n' ? std::string_view() : ColorOf(classes[i]);
    if (wanted != open) {
      if (!open.empty()) out += "\x1b[0m";
      if (!wanted.empty()) out.append("\x1b[").append(wanted).append("m");
      open = wanted;
    }
    out.push_back(c);
  }
  if (!open.empty()) out += "\x1b[0m";
  return out;
}

std::string RenderJsonRuns(std::string_view path, const std::vector<unsigned char>& classes) {
  Json runs = Json::array();
  for (std::size_t start = 0; start < classes.size();) {
    std::size_t end = start + 1;
    while (end < classes.size() && classes[end] == classes[start]) ++end;
    runs.push_back(Json{{"offset", start}, {"length", end - start}, {"class", ClassName(classes[start])}});
    start = end;
  }
  const Json file = {{"file", path}, {"runs", std::move(runs)}};
  return file.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quill::cli
