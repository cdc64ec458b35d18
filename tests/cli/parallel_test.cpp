#include "parallel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace quill::cli {
namespace {

TEST(ParallelRunInOrder, DeliversInIndexOrderForEveryWorkerCount) {
  for (unsigned jobs : {1u, 2u, 3u, 8u, 64u}) {
    SCOPED_TRACE(jobs);
    const std::size_t count = 200;
    std::vector<std::size_t> results(count, 0);
    std::vector<std::size_t> delivered;
    RunInOrder(
        count, RunOptions{jobs, false},
        [&](std::size_t i) {
          // Early items finish last, so that order must be restored.
          if (i % 17 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
          results[i] = i * i;
        },
        [&](std::size_t i) {
          EXPECT_EQ(results[i], i * i);
          delivered.push_back(i);
          return ItemOutput{};
        });
    ASSERT_EQ(delivered.size(), count);
    for (std::size_t i = 0; i < count; ++i) EXPECT_EQ(delivered[i], i);
  }
}

TEST(ParallelRunInOrder, NothingToDo) {
  bool called = false;
  RunInOrder(
      0, RunOptions{4, false}, [&](std::size_t) { called = true; },
      [&](std::size_t) {
        called = true;
        return ItemOutput{};
      });
  EXPECT_FALSE(called);
}

TEST(ParallelRunInOrder, WorkFailureIsRethrownAtItsTurn) {
  std::vector<std::size_t> delivered;
  EXPECT_THROW(RunInOrder(
                   10, RunOptions{3, false},
                   [](std::size_t i) {
                     if (i == 4) throw std::runtime_error("item 4");
                   },
                   [&](std::size_t i) {
                     delivered.push_back(i);
                     return ItemOutput{};
                   }),
               std::runtime_error);
  EXPECT_EQ(delivered, (std::vector<std::size_t>{0, 1, 2, 3}));
}

TEST(DefaultJobs, AtLeastOne) {
  EXPECT_GE(DefaultJobs(), 1u);
}

}  // namespace
}  // namespace quill::cli
