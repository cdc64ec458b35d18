// Contract checks shared by the fuzz targets: each aborts with a message when
// an export breaks its documented contract for the given input.
#ifndef QUILL_FUZZ_CONTRACTS_H_
#define QUILL_FUZZ_CONTRACTS_H_

#include <cstddef>
#include <cstdint>

namespace quill::fuzz {

void CheckFormatContract(const std::uint8_t* data, std::size_t size);
void CheckLintContract(const std::uint8_t* data, std::size_t size);
void CheckHighlightContract(const std::uint8_t* data, std::size_t size);

}  // namespace quill::fuzz

#endif  // QUILL_FUZZ_CONTRACTS_H_
