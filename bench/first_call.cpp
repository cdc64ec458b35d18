// Times one service on generated text in a fresh process: the first call
// (fresh pages for the output and the engine's working memory, tables built)
// against the best of later calls on the same text, and against a first call
// into an output buffer whose pages were touched beforehand. With
// --calls N --quiet it only calls the service N times, for instruction
// counters such as callgrind or perf stat.
//   quill_first_call [--service format|lint|highlight] [--bytes N] [--calls N] [--quiet]
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

enum class Service { kFormat, kLint, kHighlight };

struct Options {
  Service service = Service::kHighlight;
  std::size_t bytes = 10'000'000;
  int calls = 5;
  bool quiet = false;
};

[[noreturn]] void ExitWithUsage(const char* program) {
  std::fprintf(stderr, "usage: %s [--service format|lint|highlight] [--bytes N] [--calls N] [--quiet]\n", program);
  std::exit(2);
}

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int k = 1; k < argc; ++k) {
    const std::string argument = argv[k];
    if (argument == "--service" && k + 1 < argc) {
      const std::string service = argv[++k];
      if (service == "format") {
        options.service = Service::kFormat;
      } else if (service == "lint") {
        options.service = Service::kLint;
      } else if (service == "highlight") {
        options.service = Service::kHighlight;
      } else {
        ExitWithUsage(argv[0]);
      }
    } else if (argument == "--bytes" && k + 1 < argc) {
      options.bytes = std::strtoull(argv[++k], nullptr, 10);
    } else if (argument == "--calls" && k + 1 < argc) {
      options.calls = std::max(1, std::atoi(argv[++k]));
    } else if (argument == "--quiet") {
      options.quiet = true;
    } else {
      ExitWithUsage(argv[0]);
    }
  }
  return options;
}

// The output room each service needs: the formatter's result is somewhat
// longer than its source, the linter allocates its own report.
std::size_t OutputBytes(Service service, std::size_t textBytes) {
  switch (service) {
    case Service::kFormat: return textBytes * 2 + 64;
    case Service::kLint: return 1;
    case Service::kHighlight: return textBytes;
  }
  return textBytes;
}

double SecondsOfCall(Service service, const std::string& text, unsigned char* out, std::size_t outBytes) {
  const auto length = static_cast<std::int32_t>(text.size());
  const auto capacity = static_cast<std::int32_t>(outBytes);
  const auto start = std::chrono::steady_clock::now();
  bool ok = true;
  switch (service) {
    case Service::kFormat:
      ok = n5p8w(text.data(), length, reinterpret_cast<char*>(out), capacity) > 0;
      break;
    case Service::kLint: {
      char* report = t2v6r(text.data(), length);
      ok = report != nullptr;
      out[0] = ok ? static_cast<unsigned char>(report[0]) : 0;
      h3x9c(report);
      break;
    }
    case Service::kHighlight:
      ok = x4b7d(text.data(), length, out, capacity) == length;
      break;
  }
  const auto stop = std::chrono::steady_clock::now();
  if (!ok) std::exit(1);
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
  const std::string text = options.service == Service::kHighlight ? quill::bench::GenerateConstraints(options.bytes)
                                                                  : quill::bench::GenerateVerilog(options.bytes);
  const std::size_t outBytes = OutputBytes(options.service, text.size());
  // new[] without an initialiser leaves the pages untouched until the first call.
  std::unique_ptr<unsigned char[]> fresh(new unsigned char[outBytes]);
  const long faultsBefore = MinorPageFaults();
  const double first = SecondsOfCall(options.service, text, fresh.get(), outBytes);
  const long firstCallFaults = MinorPageFaults() - faultsBefore;
  double warm = first;
  for (int k = 1; k < options.calls; ++k) {
    warm = std::min(warm, SecondsOfCall(options.service, text, fresh.get(), outBytes));
  }
  if (options.quiet) return fresh[0] == 0xFF ? 1 : 0;

  std::vector<unsigned char> touched(outBytes, 0xFF);
  const double firstIntoTouched = SecondsOfCall(options.service, text, touched.data(), outBytes);
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
