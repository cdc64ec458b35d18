// Replays the inputs kept under fuzz/regressions/<target>/ and the committed
// seeds under fuzz/seeds/<target>/ through the contract checks the fuzz
// targets use, so an input that once broke a service is checked on every run
// of the unit suite, not only when the fuzzers run.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/contracts.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

using ContractCheck = std::string (*)(const std::uint8_t*, std::size_t);

struct TargetCase {
  const char* target;
  ContractCheck check;
};

constexpr TargetCase kTargets[] = {
    {"format", fuzz::CheckFormatContract},
    {"lint", fuzz::CheckLintContract},
    {"highlight", fuzz::CheckHighlightContract},
};

std::vector<fs::path> FilesUnder(const fs::path& folder) {
  std::vector<fs::path> files;
  if (!fs::is_directory(folder)) return files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string ReadBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Every kept input of every target, through that target's contract check and
// through the other services too (any byte sequence is valid input to all).
std::size_t ReplayFolder(const char* kind) {
  std::size_t replayed = 0;
  for (const TargetCase& target : kTargets) {
    for (const fs::path& path : FilesUnder(fs::path(QUILL_FUZZ_DIR) / kind / target.target)) {
      const std::string bytes = ReadBytes(path);
      const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
      for (const TargetCase& service : kTargets) {
        EXPECT_EQ(service.check(data, bytes.size()), "") << service.target << " contract on " << path;
      }
      ++replayed;
    }
  }
  return replayed;
}

TEST(FuzzRegressions, KeptInputsKeepTheContracts) { EXPECT_GT(ReplayFolder("regressions"), 0u); }

TEST(FuzzRegressions, SeedInputsKeepTheContracts) { EXPECT_GT(ReplayFolder("seeds"), 0u); }

}  // namespace
}  // namespace quill
