#include <cstddef>
#include <cstdint>

#include "contracts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quill::fuzz::CheckFormatContract(data, size);
  return 0;
}
