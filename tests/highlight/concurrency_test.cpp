// Many threads classify at once. The first-call test runs in a fresh child
// process, so that the threads' calls are the very first ones there and race
// to build the word sets.
#include <gtest/gtest.h>

#include <cstdlib>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "class_notation.h"

namespace quill::test {
namespace {

constexpr int kThreads = 32;

const std::string kText =
    "set_property -dict { PACKAGE_PIN W5 IOSTANDARD LVCMOS33 } [get_ports {led[0]}] ;# x\n"
    "report_timing execute_flow PULLUP";
const std::string kExpected =
    "KKKKKKKKKKKK.KKKKK.b.PPPPPPPPPPP.NN.PPPPPPPPPP.IIIIIIII.b..KKKKKKKKK.bppppppb...ccc."
    "TTTTTTTTTTTTT.FFFFFFFFFFFF.PPPPPP";

// Every thread waits until all are ready, then classifies the text and a
// variant of its own; returns whether every result was right.
bool ClassifyFromManyThreadsAtOnce() {
  std::vector<std::string> results(kThreads);
  std::vector<std::string> variants(kThreads);
  std::latch ready(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const std::size_t slot = static_cast<std::size_t>(t);
      ready.arrive_and_wait();
      results[slot] = Classes(kText);
      variants[slot] = Classes(kText + " run" + std::to_string(t));
    });
  }
  for (std::thread& thread : threads) thread.join();
  bool allRight = true;
  for (int t = 0; t < kThreads; ++t) {
    const std::size_t slot = static_cast<std::size_t>(t);
    allRight = allRight && results[slot] == kExpected;
    allRight = allRight && variants[slot] == Classes(kText + " run" + std::to_string(t));
  }
  return allRight;
}

TEST(ConcurrencyTest, ConcurrentFirstCallsInFreshProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(ClassifyFromManyThreadsAtOnce() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST(ConcurrencyTest, ConcurrentCallsGiveIdenticalResults) {
  for (int round = 0; round < 4; ++round) EXPECT_TRUE(ClassifyFromManyThreadsAtOnce()) << "round " << round;
  EXPECT_EQ(Classes(kText), kExpected);
}

}  // namespace
}  // namespace quill::test
