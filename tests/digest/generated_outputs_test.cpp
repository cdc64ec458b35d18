// Guards the services' outputs while they are optimised: the outputs for the
// deterministic generated inputs must keep their stored digests. After an
// intended change of output, run with QUILL_UPDATE_DIGESTS=1 to rewrite the
// stored file, and review the change.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "generate_inputs.h"
#include "quill.h"

namespace {

constexpr const char* kDigestFile = QUILL_DIGEST_FILE;
const std::size_t kSizes[] = {10'000, 100'000, 1'000'000};

std::string Hex(std::uint64_t value) {
  static const char digits[] = "0123456789abcdef";
  std::string hex(16, '0');
  for (int i = 15; i >= 0; --i, value >>= 4) hex[static_cast<std::size_t>(i)] = digits[value & 15];
  return hex;
}

std::string Digest(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (char c : bytes) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3ULL;
  }
  return Hex(hash) + "-" + std::to_string(bytes.size());
}

std::string Format(const std::string& text) {
  std::vector<char> out(text.size() * 2 + 4096);
  int32_t n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  if (n < -1) {
    out.resize(static_cast<std::size_t>(-n));
    n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  }
  return n < 0 ? std::string("error") : std::string(out.data(), static_cast<std::size_t>(n));
}

std::string Lint(const std::string& text) {
  char* report = t2v6r(text.data(), static_cast<int32_t>(text.size()));
  std::string copy = report != nullptr ? report : "null";
  h3x9c(report);
  return copy;
}

std::string Highlight(const std::string& text) {
  std::string classes(text.size(), '\0');
  x4b7d(text.data(), static_cast<int32_t>(text.size()), reinterpret_cast<unsigned char*>(classes.data()),
        static_cast<int32_t>(classes.size()));
  return classes;
}

std::map<std::string, std::string> CurrentDigests() {
  std::map<std::string, std::string> digests;
  for (std::size_t size : kSizes) {
    const std::string verilog = quill::bench::GenerateVerilog(size);
    const std::string constraints = quill::bench::GenerateConstraints(size);
    const std::string suffix = "/" + std::to_string(size);
    digests["format" + suffix] = Digest(Format(verilog));
    digests["lint" + suffix] = Digest(Lint(verilog));
    digests["highlight" + suffix] = Digest(Highlight(constraints));
  }
  const std::string module = quill::bench::GenerateModule(2000);
  digests["format/module2000"] = Digest(Format(module));
  digests["lint/module2000"] = Digest(Lint(module));
  return digests;
}

std::map<std::string, std::string> StoredDigests() {
  std::map<std::string, std::string> digests;
  std::ifstream in(kDigestFile);
  std::string key, value;
  while (in >> key >> value) digests[key] = value;
  return digests;
}

TEST(GeneratedOutputDigestTest, OutputsKeepTheirStoredDigests) {
  const std::map<std::string, std::string> current = CurrentDigests();
  const char* update = std::getenv("QUILL_UPDATE_DIGESTS");
  if (update != nullptr && std::string(update) == "1") {
    std::ofstream out(kDigestFile);
    for (const auto& [key, value] : current) out << key << ' ' << value << '\n';
    GTEST_SKIP() << "digests rewritten to " << kDigestFile;
  }
  const std::map<std::string, std::string> stored = StoredDigests();
  ASSERT_FALSE(stored.empty()) << "no stored digests in " << kDigestFile;
  for (const auto& [key, value] : current) {
    auto found = stored.find(key);
    ASSERT_NE(found, stored.end()) << key;
    EXPECT_EQ(found->second, value) << "output changed for " << key;
  }
}

}  // namespace
