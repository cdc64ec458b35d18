// Times the language server's workspace index: building it over 10,000
// generated files and over the corpus beside the repository, then answering
// definition and hover at 1,000 positions each. A plain program (not Google
// Benchmark) because each figure is one wall-clock run of a whole workflow.
//
//   build/release/bench/quill_lsp_index_bench [FILE_COUNT]
// QUILL_CORPUS_DIR in the environment points it at another corpus folder.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "lsp/navigation.h"
#include "lsp/workspace_index.h"

namespace {

using Clock = std::chrono::steady_clock;
using quill::lsp::FilePtr;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

// Module k instantiates modules k-1 and k-2, so that definitions cross files.
std::string GeneratedModule(int k) {
  std::string text = "// generated module " + std::to_string(k) + "\nmodule gen_" + std::to_string(k) +
                     " #(parameter W = 8) (\n  input clk,\n  input [W-1:0] a,\n  output reg [W-1:0] q\n);\n";
  text += "  wire [W-1:0] s0, s1;\n  reg [3:0] state;\n";
  for (int d = 1; d <= 2 && k - d >= 0; ++d) {
    text += "  gen_" + std::to_string(k - d) + " #(.W(W)) u_" + std::to_string(d) + " (.clk(clk), .a(a), .q(s" +
            std::to_string(d - 1) + "));\n";
  }
  text += "  always @(posedge clk) begin\n    state <= state + 1;\n    q <= s0 ^ s1 ^ a;\n  end\nendmodule\n";
  return text;
}

struct Index {
  quill::lsp::WorkspaceIndex index;
  std::size_t files = 0;
  double seconds = 0;
};

void Build(Index& out, const std::string& folder) {
  const auto start = Clock::now();
  const std::atomic<bool> keepGoing = true;
  for (const std::string& path : quill::lsp::ListVerilogFiles({folder}, keepGoing)) {
    if (std::optional<std::string> text = quill::lsp::ReadFileText(path)) {
      out.index.SetDisk(std::make_shared<quill::lsp::IndexedFile>(quill::lsp::PathToFileUri(path), std::move(*text)));
      ++out.files;
    }
  }
  out.seconds = Seconds(start);
}

// Definition and hover at `count` identifier positions drawn from the files.
void Query(const Index& built, int count, const char* label) {
  const std::vector<FilePtr> files = built.index.Files();
  std::mt19937 random(7);
  std::vector<double> definition, hover;
  int found = 0;
  for (int n = 0; n < count && !files.empty(); ++n) {
    const FilePtr& file = files[random() % files.size()];
    const auto& tokens = file->tokens.tokens;
    if (tokens.empty()) continue;
    const auto& token = tokens[random() % tokens.size()];
    const quill::lsp::Position position = file->lines.PositionOf(token.begin);
    auto start = Clock::now();
    // A request takes its snapshot of the index, as the server does.
    const nlohmann::json locations = quill::lsp::Definition(*file, position, built.index.Files());
    definition.push_back(Seconds(start) * 1e3);
    start = Clock::now();
    const nlohmann::json text = quill::lsp::Hover(*file, position, built.index.Files());
    hover.push_back(Seconds(start) * 1e3);
    found += !locations.empty();
  }
  auto report = [label](const char* what, std::vector<double>& ms) {
    if (ms.empty()) return;
    std::sort(ms.begin(), ms.end());
    double sum = 0;
    for (double m : ms) sum += m;
    std::printf("%s %s: %zu answers, mean %.3f ms, 99th %.3f ms, max %.3f ms\n", label, what, ms.size(),
                sum / static_cast<double>(ms.size()), ms[ms.size() * 99 / 100], ms.back());
  };
  report("definition", definition);
  report("hover", hover);
  std::printf("%s: %d of %d positions had a definition\n", label, found, count);
}

}  // namespace

int main(int argc, char** argv) {
  const int fileCount = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10000;
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "quill-index-bench";
  std::filesystem::remove_all(folder);
  for (int k = 0; k < fileCount; ++k) {
    const std::filesystem::path sub = folder / ("d" + std::to_string(k / 100));
    std::filesystem::create_directories(sub);
    std::ofstream(sub / ("gen_" + std::to_string(k) + ".v"), std::ios::binary) << GeneratedModule(k);
  }
  Index generated;
  Build(generated, folder.string());
  std::printf("generated: %zu files indexed in %.2f s\n", generated.files, generated.seconds);
  Query(generated, 1000, "generated");
  std::filesystem::remove_all(folder);

  const char* corpusOverride = std::getenv("QUILL_CORPUS_DIR");
  const std::filesystem::path corpus(corpusOverride != nullptr ? corpusOverride : QUILL_CORPUS_DIR);
  if (std::filesystem::is_directory(corpus)) {
    Index real;
    Build(real, corpus.string());
    std::printf("corpus: %zu files indexed in %.2f s\n", real.files, real.seconds);
    Query(real, 1000, "corpus");
  } else {
    std::printf("corpus: folder absent, skipped\n");
  }
  return generated.seconds < 10.0 ? 0 : 1;
}
