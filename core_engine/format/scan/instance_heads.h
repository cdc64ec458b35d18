// The shapes of a module instance's first line, read by hand: each run of
// word bytes or white space in these shapes is maximal in any match, so one
// walk from the start decides them and gives the same pieces as the
// pattern named beside each.
#ifndef QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_
#define QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_

#include <cstddef>
#include <optional>
#include <string_view>

namespace quill {

// The pieces of a head at the start of `t`, as views into it.
struct InstanceHead {
  std::string_view type;  // the first word
  std::string_view name;  // the second word; empty where the shape has none
  std::size_t end = 0;    // just past the head's "(", or t's size where it has none
};

// "^(\w+)\s+(\w+)\s*\(" (kInstanceHeadPattern).
std::optional<InstanceHead> ReadInstanceHead(std::string_view t);
// "^(\w+)\s+#\s*\(" (kParamInstanceHeadPattern).
std::optional<InstanceHead> ReadParamInstanceHead(std::string_view t);
// "^(\w+)\s+(\w+)$" (kTypeAndNamePattern).
std::optional<InstanceHead> ReadTypeAndName(std::string_view t);
// "^(\w+)$" (kSingleWordPattern).
std::optional<InstanceHead> ReadSingleWord(std::string_view t);
// "^(\w+)\s*\(" (kCallHeadPattern): the type is the callee's name.
std::optional<InstanceHead> ReadCallHead(std::string_view t);

// HasInstanceHead(t) || HasParamInstanceHead(t), in one walk: the two share
// the type word and the blanks behind it.
bool HasInstanceOrParamHead(std::string_view t);
// The same, where `t` begins with a run of word bytes that ends at
// `wordEnd`.
bool HasInstanceOrParamHeadAfter(std::string_view t, std::size_t wordEnd);
// Whether `t` has one of the four shapes of an instance's first line
// (instance head, parameterised head, type and name, single word), in one
// walk.
bool HasAnyHeaderShape(std::string_view t);

inline bool HasInstanceHead(std::string_view t) { return ReadInstanceHead(t).has_value(); }
inline bool HasParamInstanceHead(std::string_view t) { return ReadParamInstanceHead(t).has_value(); }
inline bool IsTypeAndName(std::string_view t) { return ReadTypeAndName(t).has_value(); }
inline bool IsSingleWord(std::string_view t) { return ReadSingleWord(t).has_value(); }

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_
