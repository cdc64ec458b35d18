// The structure of a Verilog or SystemVerilog text: its modules (and
// interfaces, programs, packages) with their ports, parameters, signals,
// instances, blocks and routines, each with where it sits in the text.
//
// Positions are zero-based lines and columns counted in UTF-8 bytes from the
// start of the line (a tab or a multi-byte character advances the column by
// its byte count). Lines end at LF; a CR before it is an ordinary byte.
#ifndef QUILL_STRUCTURE_STRUCTURE_H_
#define QUILL_STRUCTURE_STRUCTURE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill::structure {

struct Point {
  std::uint32_t line = 0;
  std::uint32_t column = 0;  // UTF-8 bytes
  friend bool operator==(const Point&, const Point&) = default;
};

// A stretch of text [begin, end) in byte offsets, with the points of both ends.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
  Point start;
  Point stop;
  friend bool operator==(const Span&, const Span&) = default;
};

struct Port {
  std::string name;
  std::string direction;  // input, output, inout, ref; empty when never declared
  std::string type;       // wire, reg, logic, a user type ...; may be empty
  std::string range;      // packed range as written, e.g. "[7:0]"; may be empty
  Span nameSpan;
  Span declaration;  // the declaring item (the port-list entry or the body statement)
  Span typeWord;     // the net or variable keyword (reg, wire, ...), when there is one
  bool soleName = false;  // the declaring statement declares this name only
};

struct Parameter {
  std::string name;
  bool local = false;  // localparam
  std::string value;   // the default as written, trimmed
  Span nameSpan;
  Span declaration;
};

struct Signal {
  std::string name;
  std::string type;   // wire, reg, logic, integer, genvar, a user type ...
  std::string range;  // packed range as written; may be empty
  Span nameSpan;
  Span declaration;  // the whole statement up to and including its ';'
  Span typeWord;     // the first type keyword
  bool soleName = false;
};

struct Instance {
  std::string moduleType;
  std::string name;
  Span typeSpan;
  Span nameSpan;
  Span span;  // from the module type to the closing ')'
};

struct Block {
  std::string kind;   // always, always_ff, always_comb, always_latch, initial, final, generate, begin
  std::string label;  // the name after "begin :", if any
  Span span;
};

struct Routine {
  std::string kind;  // function or task
  std::string name;
  Span nameSpan;
  Span span;
};

struct Module {
  std::string kind;  // module, macromodule, interface, program, package, primitive, checker
  std::string name;
  Span nameSpan;
  Span span;    // from the keyword to the end keyword (or where the text stops it)
  Span header;  // from the keyword to the ';' that ends the header
  std::vector<Port> ports;
  std::vector<Parameter> parameters;
  std::vector<Signal> signals;
  std::vector<Instance> instances;
  std::vector<Block> blocks;
  std::vector<Routine> routines;
};

// begin/end, fork/join, case/endcase, generate/endgenerate,
// function/endfunction, task/endtask pairs over more than one line, and
// comment blocks.
struct Fold {
  Span span;
  bool comment = false;
};

struct FileStructure {
  std::vector<Module> modules;
  std::vector<Fold> folds;
};

// Reads the structure in time linear in the text, without recursion; any
// bytes are accepted.
FileStructure ScanStructure(std::string_view text);

}  // namespace quill::structure

#endif  // QUILL_STRUCTURE_STRUCTURE_H_
