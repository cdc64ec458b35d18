// The per-byte class codes of the constraint highlighter. The values are
// those of QuillTokenClass in quill.h, which hosts map to colours.
#ifndef QUILL_HIGHLIGHT_TOKEN_CLASS_H_
#define QUILL_HIGHLIGHT_TOKEN_CLASS_H_

namespace quill {

enum class TokenClass : unsigned char {
  kPlain = 0,         // white space, punctuation, numbers, unknown words
  kComment = 1,       // from "#" to the end of the line
  kString = 2,        // a double-quoted string, quotes included
  kKeyword = 3,       // constraint and Tcl keywords
  kProperty = 4,      // pin properties such as PACKAGE_PIN
  kIoStandard = 5,    // I/O standards such as LVCMOS33
  kPinName = 6,       // package pins such as W5, AB12, PIN_A5
  kPortName = 7,      // port objects of get_ports
  kBrace = 8,         // "{" and "}"
  kToolCommand = 9,   // tool commands such as synth_design
  kFlowCommand = 10,  // flow commands such as execute_flow
};

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_TOKEN_CLASS_H_
