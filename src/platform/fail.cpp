#include "platform/fail.h"

namespace korvixsdk {

Failure Fail(std::int32_t code, const char* text) { return {{code, text}}; }

Failure Fail(std::int32_t code, std::string text) { return {{code, std::move(text)}}; }

}  // namespace korvixsdk
