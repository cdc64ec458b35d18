// Times the highlighter on generated constraint text in a fresh process: the
// first call (fresh output pages, word sets built) against the best of later
// calls on the same buffer, and against a first call into a buffer whose pages
// were touched beforehand. With --calls N --quiet it only classifies N times,
// for instruction counters such as callgrind or perf stat.
//   quill_highlight_first_call [--bytes N] [--calls N] [--quiet]
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <sys/resource.h>

#include "generate_inputs.h"
#include "quill.h"

namespace {

struct Options {
  std::size_t bytes = 10'000'000;
  int calls = 5;
  bool quiet = false;
};

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int k = 1; k < argc; ++k) {
    const std::string argument = argv[k];
    if (argument == "--bytes" && k + 1 < argc) {
      options.bytes = std::strtoull(argv[++k], nullptr, 10);
    } else if (argument == "--calls" && k + 1 < argc) {
      options.calls = std::max(1, std::atoi(argv[++k]));
    } else if (argument == "--quiet") {
      options.quiet = true;
    } else {
      std::fprintf(stderr, "usage: %s [--bytes N] [--calls N] [--quiet]\n", argv[0]);
      std::exit(2);
    }
  }
  return options;
}

double SecondsOfCall(const std::string& text, unsigned char* out) {
  const auto start = std::chrono::steady_clock::now();
  const std::int32_t n = x4b7d(text.data(), static_cast<std::int32_t>(text.size()), out,
                               static_cast<std::int32_t>(text.size()));
  const auto stop = std::chrono::steady_clock::now();
  if (n != static_cast<std::int32_t>(text.size())) std::exit(1);
  return std::chrono::duration<double>(stop - start).count();
}

long MinorPageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

double MegabytesPerSecond(std::size_t bytes, double seconds) {
  return static_cast<double>(bytes) / 1e6 / seconds;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = ParseOptions(argc, argv);
  const std::string text = quill::bench::GenerateConstraints(options.bytes);
  // new[] without an initialiser leaves the pages untouched until the first call.
  std::unique_ptr<unsigned char[]> fresh(new unsigned char[text.size()]);
  const long faultsBefore = MinorPageFaults();
  const double first = SecondsOfCall(text, fresh.get());
  const long firstCallFaults = MinorPageFaults() - faultsBefore;
  double warm = first;
  for (int k = 1; k < options.calls; ++k) warm = std::min(warm, SecondsOfCall(text, fresh.get()));
  if (options.quiet) return fresh[0] == 0xFF ? 1 : 0;

  std::vector<unsigned char> touched(text.size(), 0xFF);
  const double firstIntoTouched = SecondsOfCall(text, touched.data());
  std::printf("bytes %zu\n", text.size());
  std::printf("first call, fresh output pages:   %8.3f ms  %7.1f MB/s  (%ld page faults)\n", first * 1e3,
              MegabytesPerSecond(text.size(), first), firstCallFaults);
  std::printf("call into already touched pages:  %8.3f ms  %7.1f MB/s\n", firstIntoTouched * 1e3,
              MegabytesPerSecond(text.size(), firstIntoTouched));
  std::printf("best warm call of %d:              %8.3f ms  %7.1f MB/s\n", options.calls, warm * 1e3,
              MegabytesPerSecond(text.size(), warm));
  std::printf("first / warm: %.2f\n", first / warm);
  return 0;
}
