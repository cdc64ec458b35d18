// Deterministic generators of realistic inputs for benchmarks and digest
// tests: the same size and seed give the same bytes on every platform.
#ifndef QUILL_BENCH_GENERATE_INPUTS_H_
#define QUILL_BENCH_GENERATE_INPUTS_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace quill::bench {

// Verilog modules (parameter and port lists, declaration groups, always
// blocks with if and case, generate blocks, instances with named
// connections, line and block comments) until the text reaches `bytes`.
std::string GenerateVerilog(std::size_t bytes, std::uint32_t seed = 1);

// XDC/SDC pin and timing constraints and Tcl build-script lines until the
// text reaches `bytes`.
std::string GenerateConstraints(std::size_t bytes, std::uint32_t seed = 1);

// One module of about `lines` lines.
std::string GenerateModule(std::size_t lines, std::uint32_t seed = 1);

}  // namespace quill::bench

#endif  // QUILL_BENCH_GENERATE_INPUTS_H_
