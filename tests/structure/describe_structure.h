// A compact text form of a FileStructure, one record a line, so that tests
// can state the exact records they expect.
#ifndef QUILL_TESTS_STRUCTURE_DESCRIBE_STRUCTURE_H_
#define QUILL_TESTS_STRUCTURE_DESCRIBE_STRUCTURE_H_

#include <string>

#include "structure/structure.h"

namespace quill::structure {

inline std::string DescribeSpan(const Span& span) {
  return std::to_string(span.start.line) + ":" + std::to_string(span.start.column) + "-" +
         std::to_string(span.stop.line) + ":" + std::to_string(span.stop.column);
}

inline std::string DescribeModule(const Module& m) {
  std::string out = m.kind + " " + m.name + " " + DescribeSpan(m.span) + "\n";
  for (const Port& p : m.ports) {
    out += "  port " + p.direction + "|" + p.type + "|" + p.range + "|" + p.name + " " + DescribeSpan(p.nameSpan) +
           (p.soleName ? " sole" : "") + "\n";
  }
  for (const Parameter& p : m.parameters) {
    out += std::string("  ") + (p.local ? "localparam " : "parameter ") + p.name + "=" + p.value + " " +
           DescribeSpan(p.nameSpan) + "\n";
  }
  for (const Signal& s : m.signals) {
    out += "  signal " + s.type + "|" + s.range + "|" + s.name + " " + DescribeSpan(s.nameSpan) +
           (s.soleName ? " sole" : "") + "\n";
  }
  for (const Instance& i : m.instances) {
    out += "  instance " + i.moduleType + " " + i.name + " " + DescribeSpan(i.span) + "\n";
  }
  for (const Block& b : m.blocks) {
    out += "  block " + b.kind + (b.label.empty() ? "" : ":" + b.label) + " " + DescribeSpan(b.span) + "\n";
  }
  for (const Routine& r : m.routines) {
    out += "  " + r.kind + " " + r.name + " " + DescribeSpan(r.span) + "\n";
  }
  return out;
}

inline std::string DescribeModules(const FileStructure& structure) {
  std::string out;
  for (const Module& m : structure.modules) out += DescribeModule(m);
  return out;
}

}  // namespace quill::structure

#endif  // QUILL_TESTS_STRUCTURE_DESCRIBE_STRUCTURE_H_
