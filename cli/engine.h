// Value-type wrappers over the engine's five C exports. Every call of the
// tool into the engine goes through here.
#ifndef QUILL_CLI_ENGINE_H_
#define QUILL_CLI_ENGINE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// The largest text the engine accepts: its lengths are signed 32-bit and
// the formatter's buffer must also hold a NUL.
inline constexpr std::size_t kMaxEngineText = 0x7FFFFFFE;

// The formatted text; nullopt when the engine reports a failure or the text
// is larger than kMaxEngineText.
std::optional<std::string> FormatSource(std::string_view text);

// The engine's JSON array of findings, byte for byte; nullopt when the
// engine could not allocate it or the text is too large.
std::optional<std::string> LintSource(std::string_view text);

// One class code (QuillTokenClass) per byte of the text; empty for an empty
// text; nullopt when the text is too large.
std::optional<std::vector<unsigned char>> ClassifySource(std::string_view text);

// "core_engine v1.25", or "unknown" when the engine cannot allocate it.
std::string EngineVersion();

}  // namespace quill::cli

#endif  // QUILL_CLI_ENGINE_H_
