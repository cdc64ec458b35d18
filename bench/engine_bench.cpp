// Throughput of the three services over input sizes (a flat bytes-per-second
// line means linear time) and the latency of format plus lint of one module.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "generate_inputs.h"
#include "quill.h"

namespace {

const std::int64_t kSizes[] = {10'000, 100'000, 1'000'000, 10'000'000};

const std::string& VerilogOfSize(std::int64_t size) {
  static std::map<std::int64_t, std::string> cache;
  auto [it, inserted] = cache.try_emplace(size);
  if (inserted) it->second = quill::bench::GenerateVerilog(static_cast<std::size_t>(size));
  return it->second;
}

const std::string& ConstraintsOfSize(std::int64_t size) {
  static std::map<std::int64_t, std::string> cache;
  auto [it, inserted] = cache.try_emplace(size);
  if (inserted) it->second = quill::bench::GenerateConstraints(static_cast<std::size_t>(size));
  return it->second;
}

void RunFormat(benchmark::State& state, const std::string& text) {
  std::vector<char> out(text.size() * 2 + 4096);
  for (auto _ : state) {
    int32_t n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
    if (n < -1) {
      out.resize(static_cast<std::size_t>(-n));
      n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
    }
    benchmark::DoNotOptimize(n);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void RunLint(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    char* report = t2v6r(text.data(), static_cast<int32_t>(text.size()));
    benchmark::DoNotOptimize(report);
    h3x9c(report);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void RunHighlight(benchmark::State& state, const std::string& text) {
  std::vector<unsigned char> out(text.size());
  for (auto _ : state) {
    benchmark::DoNotOptimize(x4b7d(text.data(), static_cast<int32_t>(text.size()), out.data(),
                                   static_cast<int32_t>(out.size())));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void BM_Format(benchmark::State& state) { RunFormat(state, VerilogOfSize(state.range(0))); }
void BM_Lint(benchmark::State& state) { RunLint(state, VerilogOfSize(state.range(0))); }
void BM_Highlight(benchmark::State& state) { RunHighlight(state, ConstraintsOfSize(state.range(0))); }

void BM_FormatAndLintModule2000Lines(benchmark::State& state) {
  static const std::string module = quill::bench::GenerateModule(2000);
  std::vector<char> out(module.size() * 2 + 4096);
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        n5p8w(module.data(), static_cast<int32_t>(module.size()), out.data(), static_cast<int32_t>(out.size())));
    char* report = t2v6r(module.data(), static_cast<int32_t>(module.size()));
    benchmark::DoNotOptimize(report);
    h3x9c(report);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(module.size()));
}

// At least two seconds per size, so that the 10 MB runs are measured over
// several calls after a first one: a first call also pays for the fresh pages
// its buffers are given.
void ApplySizes(benchmark::internal::Benchmark* b) {
  for (std::int64_t size : kSizes) b->Arg(size);
  b->Unit(benchmark::kMillisecond);
  b->MinTime(2.0);
}

BENCHMARK(BM_Format)->Apply(ApplySizes);
BENCHMARK(BM_Lint)->Apply(ApplySizes);
BENCHMARK(BM_Highlight)->Apply(ApplySizes);
BENCHMARK(BM_FormatAndLintModule2000Lines)->Unit(benchmark::kMicrosecond);

// The real-world corpus beside the repository, concatenated per kind.
std::string ConcatenateCorpus(const std::vector<std::string>& extensions) {
  const std::filesystem::path root(QUILL_CORPUS_DIR);
  std::error_code error;
  if (!std::filesystem::is_directory(root, error)) return {};
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root, error)) {
    if (!entry.is_regular_file()) continue;
    for (const std::string& ext : extensions) {
      if (entry.path().extension() == ext) files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  std::string text;
  for (const auto& file : files) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    text += content.str();
    text += '\n';
  }
  return text;
}

void RegisterCorpusBenchmarks() {
  static const std::string verilog = ConcatenateCorpus({".v", ".sv", ".vh", ".svh"});
  static const std::string constraints =
      ConcatenateCorpus({".xdc", ".sdc", ".tcl", ".qsf", ".cst", ".pcf", ".lpf", ".ucf"});
  if (!verilog.empty()) {
    benchmark::RegisterBenchmark("BM_FormatCorpus", [](benchmark::State& s) { RunFormat(s, verilog); })
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("BM_LintCorpus", [](benchmark::State& s) { RunLint(s, verilog); })
        ->Unit(benchmark::kMillisecond);
  }
  if (!constraints.empty()) {
    benchmark::RegisterBenchmark("BM_HighlightCorpus", [](benchmark::State& s) { RunHighlight(s, constraints); })
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterCorpusBenchmarks();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
