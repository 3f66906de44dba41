// Small UTF-16 to UTF-8 helper for backend code (names, diagnostics). Unpaired surrogates
// become U+FFFD.
#pragma once

#include <string>

namespace Quillanor::Common::Detail {

std::string Utf16ToUtf8(const char16_t* text);

} // namespace Quillanor::Common::Detail
