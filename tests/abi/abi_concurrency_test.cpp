// Sixteen threads call all five exports at once on a freshly loaded copy of
// the library, so that the very first call of every export races with the
// others; each result must equal that of a serial run afterwards.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <latch>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "abi/loaded_library.h"

namespace quill_abi {
namespace {

constexpr int kThreads = 16;
constexpr int kRounds = 3;

// A private copy of the built library: dlopen gives it statics of its own,
// untouched by the other tests of this binary.
LoadedLibrary LoadFreshCopy() {
  std::string folder = (std::filesystem::temp_directory_path() / "quill_abi_XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return LoadedLibrary{nullptr, "mkdtemp failed"};
  const std::filesystem::path copy = std::filesystem::path(folder) / "libquill_fresh.so";
  std::error_code error;
  std::filesystem::copy_file(QUILL_LIBRARY_PATH, copy, error);
  if (error) return LoadedLibrary{nullptr, "copy failed: " + error.message()};
  LoadedLibrary library = LoadLibrary(copy.string());
  std::filesystem::remove_all(folder, error);
  return library;
}

std::string VerilogFor(int index) {
  const std::string n = std::to_string(index);
  return "module m" + n + " #(parameter W = " + n + ") (\n  input wire clk, input wire [W-1:0] d" + n +
         ",\n  output reg [7:0] q\n);\n/* block\n comment */\nwire a" + n + ";\nreg [3:0] b;\nassign a" + n + " = d" +
         n + ";\nalways @(*) begin\n  if (clk) b = a" + n + ";\n  case (b)\n  2'b01: q = 1;\n  endcase\nend\n" +
         "sub u" + n + " (\n.a(a" + n + "), .b(b)\n);\nendmodule\r\n";
}

std::string ConstraintsFor(int index) {
  const std::string n = std::to_string(index);
  return "# pins " + n + "\nset_property PACKAGE_PIN W" + n + " [get_ports clk]\nset_property IOSTANDARD LVCMOS33 " +
         "[get_ports {led[" + n + "]}]\ncreate_clock -period 10.0 [get_ports clk]\nsynth_design -top top\n" +
         "puts \"done " + n + "\"\n";
}

// Everything one thread observes, in the order it calls the exports.
using Observed = std::vector<std::string>;

// Calls all five exports; `rotation` picks which export comes first.
Observed CallAll(const LoadedLibrary& quill, int index, int rotation) {
  Observed observed;
  const std::string verilog = VerilogFor(index);
  const std::string constraints = ConstraintsFor(index);
  for (int step = 0; step < 4; ++step) {
    switch ((step + rotation) % 4) {
      case 0: {
        std::vector<char> out(verilog.size() * 4 + 256);
        const int32_t n = quill.format(verilog.data(), static_cast<int32_t>(verilog.size()), out.data(),
                                       static_cast<int32_t>(out.size()));
        observed.push_back(n < 0 ? "format error " + std::to_string(n)
                                 : std::string(out.data(), static_cast<std::size_t>(n)));
        break;
      }
      case 1: {
        char* report = quill.lint(verilog.data(), static_cast<int32_t>(verilog.size()));
        observed.push_back(report != nullptr ? report : "<null>");
        quill.release(report);
        break;
      }
      case 2: {
        std::string classes(constraints.size(), '\0');
        const int32_t n =
            quill.highlight(constraints.data(), static_cast<int32_t>(constraints.size()),
                            reinterpret_cast<unsigned char*>(classes.data()), static_cast<int32_t>(classes.size()));
        observed.push_back(std::to_string(n) + ":" + classes);
        break;
      }
      default: {
        char* version = quill.version();
        observed.push_back(version != nullptr ? version : "<null>");
        quill.release(version);
        break;
      }
    }
  }
  return observed;
}

TEST(AbiConcurrencyTest, SixteenThreadsFromTheVeryFirstCallAgreeWithASerialRun) {
  const LoadedLibrary quill = LoadFreshCopy();
  ASSERT_TRUE(quill.Complete()) << quill.error;
  ASSERT_NE(quill.handle, Quill().handle);

  std::vector<std::vector<Observed>> concurrent(kThreads, std::vector<Observed>(kRounds));
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&quill, &concurrent, &start, t] {
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) {
        concurrent[static_cast<std::size_t>(t)][static_cast<std::size_t>(round)] = CallAll(quill, t, t + round);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();

  for (int t = 0; t < kThreads; ++t) {
    for (int round = 0; round < kRounds; ++round) {
      const Observed serial = CallAll(quill, t, t + round);
      EXPECT_EQ(concurrent[static_cast<std::size_t>(t)][static_cast<std::size_t>(round)], serial)
          << "thread " << t << " round " << round;
    }
  }
}

}  // namespace
}  // namespace quill_abi
