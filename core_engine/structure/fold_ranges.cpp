#include <array>
#include <string_view>
#include <vector>

#include "structure/structure.h"
#include "structure/token_view.h"
#include "structure/verilog_tokens.h"

namespace quill::structure {
namespace {

// Pairs of words that open and close a foldable stretch.
enum class Pair : std::uint8_t { kBegin, kFork, kCase, kGenerate, kFunction, kTask, kCount };

bool Opens(std::string_view w, Pair& pair) {
  if (w == "begin") pair = Pair::kBegin;
  else if (w == "fork") pair = Pair::kFork;
  else if (w == "case" || w == "casex" || w == "casez" || w == "randcase") pair = Pair::kCase;
  else if (w == "generate") pair = Pair::kGenerate;
  else if (w == "function") pair = Pair::kFunction;
  else if (w == "task") pair = Pair::kTask;
  else return false;
  return true;
}

bool Closes(std::string_view w, Pair& pair) {
  if (w == "end") pair = Pair::kBegin;
  else if (w == "join" || w == "join_any" || w == "join_none") pair = Pair::kFork;
  else if (w == "endcase") pair = Pair::kCase;
  else if (w == "endgenerate") pair = Pair::kGenerate;
  else if (w == "endfunction") pair = Pair::kFunction;
  else if (w == "endtask") pair = Pair::kTask;
  else return false;
  return true;
}

// Words after which an opener has no body: `wait fork`, `import "DPI-C"
// function ...`, `extern task ...`.
bool OpensNothingAfter(std::string_view previous) {
  return previous == "wait" || previous == "disable" || previous == "import" || previous == "export" ||
         previous == "extern" || previous == "pure" || previous == "context";
}

struct Open {
  Pair pair;
  std::size_t token;
};

}  // namespace

// Multi-line pairs in order of their closing word, then the comment blocks.
// An unmatched closer is passed over; one that matches an opener further
// down closes the ones above it unfolded, so each opener is popped once.
std::vector<Fold> FoldRanges(const TokenView& view, const TokenizedText& tokenized) {
  std::vector<Fold> folds;
  std::vector<Open> stack;
  std::array<std::size_t, static_cast<std::size_t>(Pair::kCount)> counts{};
  for (std::size_t i = 0; i < view.Size(); ++i) {
    if (view.At(i).kind != TokenKind::kIdentifier) continue;
    const std::string_view w = view.Word(i);
    Pair pair{};
    if (Opens(w, pair)) {
      if (i > 0 && OpensNothingAfter(view.Word(i - 1))) continue;
      stack.push_back({pair, i});
      ++counts[static_cast<std::size_t>(pair)];
      continue;
    }
    if (!Closes(w, pair) || counts[static_cast<std::size_t>(pair)] == 0) continue;
    while (!stack.empty()) {
      const Open open = stack.back();
      stack.pop_back();
      --counts[static_cast<std::size_t>(open.pair)];
      if (open.pair != pair) continue;
      if (view.At(open.token).line < view.At(i).line) folds.push_back({view.SpanOf(open.token, i), false});
      break;
    }
  }
  for (const Span& comment : tokenized.commentBlocks) folds.push_back({comment, true});
  return folds;
}

}  // namespace quill::structure
