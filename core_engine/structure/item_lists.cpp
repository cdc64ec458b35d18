#include "structure/item_lists.h"

#include <optional>
#include <string>
#include <vector>

namespace quill::structure {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// One entry of a list, tokens [first, last), read at bracket depth 0.
struct Item {
  std::size_t first = 0;
  std::size_t last = 0;
  std::size_t name = kNone;       // the declared name
  std::size_t direction = kNone;  // input, output, inout, ref
  std::size_t typeFirst = kNone;  // type words [typeFirst, typeEnd)
  std::size_t typeEnd = kNone;
  std::size_t rangeFirst = kNone;  // packed dimensions [rangeFirst, rangeLast]
  std::size_t rangeLast = kNone;
  std::size_t typeWord = kNone;  // the first net or variable keyword
  std::size_t equals = kNone;
  bool parameterWord = false;
  bool localparamWord = false;
};

bool IsOpen(std::string_view w) { return w == "(" || w == "[" || w == "{"; }
bool IsClose(std::string_view w) { return w == ")" || w == "]" || w == "}"; }

Item ReadItem(const TokenView& view, std::size_t first, std::size_t last) {
  Item item;
  item.first = first;
  item.last = last;
  std::size_t depth = 0;
  std::size_t lead = first;  // past the leading direction and parameter words
  std::size_t dimsFirst = kNone, dimsLast = kNone;  // adjacent [..] groups at depth 0
  for (std::size_t i = first; i < last; ++i) {
    const std::string_view w = view.Word(i);
    if (view.At(i).kind == TokenKind::kPunctuation) {
      if (IsOpen(w)) {
        if (depth == 0 && w == "[") {
          if (dimsFirst == kNone || dimsLast + 1 != i) dimsFirst = i;
          dimsLast = view.SkipGroup(i, false) - 1;
        }
        ++depth;
      } else if (IsClose(w)) {
        if (depth > 0) --depth;
      } else if (w == "=" && depth == 0) {
        item.equals = i;
        break;
      }
      continue;
    }
    if (depth != 0 || view.At(i).kind != TokenKind::kIdentifier) continue;
    if (i == lead && IsDirection(w)) {
      item.direction = i;
      lead = i + 1;
      continue;
    }
    if (i == lead && (w == "parameter" || w == "localparam")) {
      (w == "parameter" ? item.parameterWord : item.localparamWord) = true;
      lead = i + 1;
      continue;
    }
    if (item.typeWord == kNone && IsDeclarationWord(w)) item.typeWord = i;
    if (view.IsName(i)) {
      // A later name makes this one a type: `my_type_t value`.
      item.name = i;
      const bool packed = dimsFirst != kNone && dimsLast + 1 == i;
      item.rangeFirst = packed ? dimsFirst : kNone;
      item.rangeLast = packed ? dimsLast : kNone;
    }
  }
  if (item.name == kNone) return item;
  item.typeFirst = lead;
  item.typeEnd = item.rangeFirst != kNone ? item.rangeFirst : item.name;
  if (item.typeEnd < item.typeFirst) item.typeEnd = item.typeFirst;
  return item;
}

std::vector<Item> ReadItems(const TokenView& view, std::size_t first, std::size_t last) {
  std::vector<Item> items;
  std::size_t depth = 0, start = first;
  for (std::size_t i = first; i < last; ++i) {
    if (view.At(i).kind != TokenKind::kPunctuation) continue;
    const std::string_view w = view.Word(i);
    if (IsOpen(w)) {
      ++depth;
    } else if (IsClose(w)) {
      if (depth > 0) --depth;
    } else if (w == "," && depth == 0) {
      if (i > start) items.push_back(ReadItem(view, start, i));
      start = i + 1;
    }
  }
  if (last > start) items.push_back(ReadItem(view, start, last));
  return items;
}

std::string Text(const TokenView& view, std::size_t first, std::size_t end) {
  if (first == kNone || end == kNone || first >= end) return {};
  return std::string(view.TextOf(first, end - 1));
}

std::string RangeText(const TokenView& view, const Item& item) {
  if (item.rangeFirst == kNone) return {};
  return std::string(view.TextOf(item.rangeFirst, item.rangeLast));
}

Span TypeWordSpan(const TokenView& view, const Item& item) {
  return item.typeWord != kNone && item.typeWord < item.name ? view.SpanOf(item.typeWord, item.typeWord) : Span{};
}

// What an entry that gives only a name takes from the one before it.
struct Inherited {
  std::string direction, type, range;
};

}  // namespace

void ReadPortList(const TokenView& view, std::size_t first, std::size_t last, Module& module) {
  const std::vector<Item> items = ReadItems(view, first, last);
  Inherited carried;
  Port* previous = nullptr;
  for (const Item& item : items) {
    if (item.name == kNone) {
      previous = nullptr;
      continue;
    }
    const bool bare = item.direction == kNone && item.typeFirst == item.name && item.rangeFirst == kNone;
    Port port;
    port.name = std::string(view.Word(item.name));
    port.nameSpan = view.SpanOf(item.name, item.name);
    port.declaration = view.SpanOf(item.first, item.last - 1);
    if (bare) {
      port.direction = carried.direction;
      port.type = carried.type;
      port.range = carried.range;
      // The entry before declares this name too: its type word is shared.
      if (previous != nullptr) previous->soleName = false;
    } else {
      if (item.direction != kNone) carried.direction = std::string(view.Word(item.direction));
      port.direction = carried.direction;
      port.type = carried.type = Text(view, item.typeFirst, item.typeEnd);
      port.range = carried.range = RangeText(view, item);
      port.typeWord = TypeWordSpan(view, item);
      port.soleName = true;
    }
    module.ports.push_back(std::move(port));
    previous = &module.ports.back();
  }
}

void ReadPortDeclaration(const TokenView& view, std::size_t first, std::size_t end, Module& module) {
  const std::vector<Item> items = ReadItems(view, first, end);
  if (items.empty() || items.front().direction == kNone) return;
  const Item& head = items.front();
  const std::string direction(view.Word(head.direction));
  const std::string type = Text(view, head.typeFirst, head.typeEnd);
  const std::string range = RangeText(view, head);
  // The ";" ends the declaration; a statement cut short by the next module's
  // keyword (or the end of the text) ends before it.
  const Span declaration = view.SpanOf(first, end < view.Size() && view.Word(end) == ";" ? end : end - 1);
  for (const Item& item : items) {
    if (item.name == kNone) continue;
    const std::string_view name = view.Word(item.name);
    Port* port = nullptr;
    for (Port& existing : module.ports) {
      if (existing.name == name) port = &existing;
    }
    if (port == nullptr) {
      module.ports.push_back({});
      port = &module.ports.back();
      port->name = std::string(name);
    }
    port->direction = direction;
    port->type = type;
    port->range = range;
    port->nameSpan = view.SpanOf(item.name, item.name);
    port->declaration = declaration;
    port->typeWord = TypeWordSpan(view, head);
    port->soleName = items.size() == 1;
  }
}

void ReadParameters(const TokenView& view, std::size_t first, std::size_t last, bool local, Module& module) {
  for (const Item& item : ReadItems(view, first, last)) {
    if (item.parameterWord) local = false;
    if (item.localparamWord) local = true;
    if (item.name == kNone) continue;
    Parameter parameter;
    parameter.name = std::string(view.Word(item.name));
    parameter.local = local;
    if (item.equals != kNone && item.equals + 1 < item.last) {
      parameter.value = std::string(view.TextOf(item.equals + 1, item.last - 1));
    }
    parameter.nameSpan = view.SpanOf(item.name, item.name);
    parameter.declaration = view.SpanOf(item.first, item.last - 1);
    module.parameters.push_back(std::move(parameter));
  }
}

void ReadSignals(const TokenView& view, std::size_t first, std::size_t end, Module& module) {
  const std::vector<Item> items = ReadItems(view, first, end);
  if (items.empty() || items.front().name == kNone) return;
  const Item& head = items.front();
  const std::string type = Text(view, head.typeFirst, head.typeEnd);
  const std::string range = RangeText(view, head);
  // The ";" ends the declaration; a statement cut short by the next module's
  // keyword (or the end of the text) ends before it.
  const Span declaration = view.SpanOf(first, end < view.Size() && view.Word(end) == ";" ? end : end - 1);
  for (const Item& item : items) {
    if (item.name == kNone) continue;
    Signal signal;
    signal.name = std::string(view.Word(item.name));
    signal.type = type;
    signal.range = range;
    signal.nameSpan = view.SpanOf(item.name, item.name);
    signal.declaration = declaration;
    signal.typeWord = TypeWordSpan(view, head);
    signal.soleName = items.size() == 1;
    module.signals.push_back(std::move(signal));
  }
}

}  // namespace quill::structure
