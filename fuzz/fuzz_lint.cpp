#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/contracts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string broken = quill::fuzz::CheckLintContract(data, size);
  if (!broken.empty()) {
    std::fprintf(stderr, "contract broken: %s\n", broken.c_str());
    std::abort();
  }
  return 0;
}
