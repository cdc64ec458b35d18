#ifndef QUILL_FORMAT_PASSES_BLOCK_COMMENTS_H_
#define QUILL_FORMAT_PASSES_BLOCK_COMMENTS_H_

#include <string>
#include <string_view>
#include <vector>

namespace quill {

// Block comments lifted out of a text, in order; the index is the number in
// the comment's placeholder.
using BlockCommentList = std::vector<std::string>;

// The placeholder of comment `index` spanning `lineCount` lines:
// "__BLKCMT_<index>__" followed by lineCount - 1 LFs, so that the text keeps
// its line count while the comment is away.
std::string BlockCommentPlaceholder(std::size_t index, std::size_t lineCount);

// Replaces every block comment by its placeholder and appends the comment to
// `comments`.
std::string ProtectBlockComments(std::string_view text, BlockCommentList* comments);

// Puts the comments back (each is a block comment as lifted, from "/*" to
// "*/"): for each comment in turn, every occurrence of its
// placeholder, left to right, is replaced by the comment's text. A placeholder
// that was altered in between stays as it is, and placeholder text inside a
// restored comment is restored by later comments, as the turn-by-turn
// replacement would do.
std::string RestoreBlockComments(std::string_view text, const BlockCommentList& comments);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_BLOCK_COMMENTS_H_
