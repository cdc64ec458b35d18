#ifndef QUILL_FORMAT_ALIGN_INSTANCES_H_
#define QUILL_FORMAT_ALIGN_INSTANCES_H_

#include <string>
#include <string_view>

namespace quill {

// Aligns the named connections of module instances into shared columns.
std::string AlignInstances(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_ALIGN_INSTANCES_H_
