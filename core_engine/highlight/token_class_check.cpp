// TokenClass codes are the QuillTokenClass values that hosts receive.
#include "highlight/token_class.h"
#include "quill.h"

namespace quill {

static_assert(static_cast<int>(TokenClass::kPlain) == QUILL_TOKEN_PLAIN);
static_assert(static_cast<int>(TokenClass::kComment) == QUILL_TOKEN_COMMENT);
static_assert(static_cast<int>(TokenClass::kString) == QUILL_TOKEN_STRING);
static_assert(static_cast<int>(TokenClass::kKeyword) == QUILL_TOKEN_KEYWORD);
static_assert(static_cast<int>(TokenClass::kProperty) == QUILL_TOKEN_PROPERTY);
static_assert(static_cast<int>(TokenClass::kIoStandard) == QUILL_TOKEN_IO_STANDARD);
static_assert(static_cast<int>(TokenClass::kPinName) == QUILL_TOKEN_PIN_NAME);
static_assert(static_cast<int>(TokenClass::kPortName) == QUILL_TOKEN_PORT_NAME);
static_assert(static_cast<int>(TokenClass::kBrace) == QUILL_TOKEN_BRACE);
static_assert(static_cast<int>(TokenClass::kToolCommand) == QUILL_TOKEN_TOOL_COMMAND);
static_assert(static_cast<int>(TokenClass::kFlowCommand) == QUILL_TOKEN_FLOW_COMMAND);

}  // namespace quill
