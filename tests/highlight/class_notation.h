// Class codes written as one character per input byte, so that expected
// classes line up under the input in a test:
//   .  Plain      c  Comment      s  String       K  Keyword
//   P  Property   I  IoStandard   N  PinName      p  PortName
//   b  Brace      T  ToolCommand  F  FlowCommand
// A code outside 0..10 shows as "?".
#ifndef QUILL_TESTS_HIGHLIGHT_CLASS_NOTATION_H_
#define QUILL_TESTS_HIGHLIGHT_CLASS_NOTATION_H_

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "highlight/classify_constraint_text.h"

namespace quill::test {

inline constexpr std::string_view kClassLetters = ".csKPINpbTF";

inline char ClassLetter(unsigned char code) {
  return code < kClassLetters.size() ? kClassLetters[code] : '?';
}

inline std::string RenderClasses(const unsigned char* codes, std::size_t length) {
  std::string rendered(length, '?');
  for (std::size_t k = 0; k < length; ++k) rendered[k] = ClassLetter(codes[k]);
  return rendered;
}

// The raw class codes of `text`, from a buffer that starts out as garbage.
inline std::vector<unsigned char> ClassCodes(std::string_view text) {
  std::vector<unsigned char> codes(text.size(), 0xA5);
  ClassifyConstraintText(text.data(), text.size(), codes.data());
  return codes;
}

// The classes of `text` in the one-character notation.
inline std::string Classes(std::string_view text) {
  const std::vector<unsigned char> codes = ClassCodes(text);
  return RenderClasses(codes.data(), codes.size());
}

// A text given as lines with the classes of each line under it; the lines are
// joined by LF, whose class is `lineFeed` (Plain unless a string spans it).
struct AnnotatedLine {
  std::string_view text;
  std::string_view classes;
  char lineFeed = '.';
};

inline std::string JoinText(const std::vector<AnnotatedLine>& lines) {
  std::string text;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    if (k > 0) text += '\n';
    text += lines[k].text;
  }
  return text;
}

inline std::string JoinClasses(const std::vector<AnnotatedLine>& lines) {
  std::string classes;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    if (k > 0) classes += lines[k - 1].lineFeed;
    classes += lines[k].classes;
  }
  return classes;
}

// One named row of a class table: a text and the class of each of its bytes.
struct ClassCase {
  const char* name;
  std::string_view text;
  std::string_view classes;
};

inline void PrintTo(const ClassCase& row, std::ostream* os) {
  *os << row.name;
}

inline std::string CaseName(const ::testing::TestParamInfo<ClassCase>& row) {
  return row.param.name;
}

// Checks every byte of a row.
class ClassTableTest : public ::testing::TestWithParam<ClassCase> {};

}  // namespace quill::test

#endif  // QUILL_TESTS_HIGHLIGHT_CLASS_NOTATION_H_
