// Contract checks of the three services, shared by the fuzz targets and the
// robustness tests: each runs an export on the input and returns "" when the
// documented contract holds, else what was broken.
#ifndef QUILL_TESTS_SUPPORT_CONTRACTS_H_
#define QUILL_TESTS_SUPPORT_CONTRACTS_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace quill::fuzz {

std::string CheckFormatContract(const std::uint8_t* data, std::size_t size);
std::string CheckLintContract(const std::uint8_t* data, std::size_t size);
std::string CheckHighlightContract(const std::uint8_t* data, std::size_t size);

}  // namespace quill::fuzz

#endif  // QUILL_TESTS_SUPPORT_CONTRACTS_H_
