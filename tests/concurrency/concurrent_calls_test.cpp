// Sixteen threads call all three services at once, from the very first call
// of the process on, and every result must equal that of a later serial run.
// This binary holds no other test, so no call warms the engine up first.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "quill.h"

namespace {

constexpr int kThreads = 16;
constexpr int kRounds = 4;

std::string Format(const std::string& text) {
  std::vector<char> out(text.size() * 4 + 256);
  int32_t n = n5p8w(text.c_str(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  if (n < -1) {
    out.resize(static_cast<std::size_t>(-n));
    n = n5p8w(text.c_str(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  }
  return n < 0 ? "<error " + std::to_string(n) + ">" : std::string(out.data(), static_cast<std::size_t>(n));
}

std::string Lint(const std::string& text) {
  char* report = t2v6r(text.c_str(), static_cast<int32_t>(text.size()));
  std::string copy = report != nullptr ? report : "<null>";
  h3x9c(report);
  return copy;
}

std::string Highlight(const std::string& text) {
  std::string classes(text.size(), '\0');
  x4b7d(text.c_str(), static_cast<int32_t>(text.size()), reinterpret_cast<unsigned char*>(classes.data()),
        static_cast<int32_t>(classes.size()));
  return classes;
}

std::string Version() {
  char* version = q7m2k();
  std::string copy = version != nullptr ? version : "<null>";
  h3x9c(version);
  return copy;
}

// A different input per thread, each touching many engine paths.
std::string InputFor(int thread) {
  std::string n = std::to_string(thread);
  return "module m" + n + " #(parameter W = " + n + ") (\n  input wire clk, input wire [W-1:0] d" + n +
         ",\n  output reg [7:0] q\n);\n/* block\n comment */\nwire a" + n +
         ";\nreg [3:0] b;\n"
         "assign a" +
         n + " = d" + n + " & 8'hFF;\nalways @(*) begin\n  if (clk) b = a" + n +
         ";\n  case (b)\n  2'b01: q = 1;\n  endcase\nend\nalways @(posedge clk) q <= q + 1;\n"
         "sub u" +
         n + " (\n.a(a" + n +
         "),\n.b(b)\n);\nendmodule\n"
         "set_property PACKAGE_PIN W" +
         n + " [get_ports {led[" + n + "]}] # pin\ncreate_clock -period 10 [get_ports clk]\n";
}

struct Results {
  std::string formatted, report, classes, version;
  bool operator==(const Results&) const = default;
};

Results RunAll(const std::string& text) {
  return {Format(text), Lint(text), Highlight(text), Version()};
}

TEST(ConcurrencyTest, SixteenThreadsFromTheFirstCallAgreeWithASerialRun) {
  std::vector<std::vector<Results>> concurrent(kThreads, std::vector<Results>(kRounds));
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &ready, &concurrent] {
      ready.fetch_add(1);
      while (ready.load() < kThreads) std::this_thread::yield();
      // Rotate the service order so that every export has a first caller.
      for (int round = 0; round < kRounds; ++round) {
        const std::string text = InputFor((t + round) % kThreads);
        Results& r = concurrent[static_cast<std::size_t>(t)][static_cast<std::size_t>(round)];
        switch ((t + round) % 3) {
          case 0:
            r.classes = Highlight(text), r.report = Lint(text), r.formatted = Format(text);
            break;
          case 1:
            r.report = Lint(text), r.formatted = Format(text), r.classes = Highlight(text);
            break;
          default:
            r.formatted = Format(text), r.classes = Highlight(text), r.report = Lint(text);
            break;
        }
        r.version = Version();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();

  for (int t = 0; t < kThreads; ++t) {
    for (int round = 0; round < kRounds; ++round) {
      const Results serial = RunAll(InputFor((t + round) % kThreads));
      EXPECT_TRUE(concurrent[static_cast<std::size_t>(t)][static_cast<std::size_t>(round)] == serial)
          << "thread " << t << " round " << round;
    }
  }
}

}  // namespace
