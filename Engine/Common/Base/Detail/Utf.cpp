#include "Engine/Common/Base/Detail/Utf.h"

#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/Detail/Unicode.h"

namespace Quillanor::Common::Detail {

std::string Utf16ToUtf8(const char16_t* text) {
    std::string out;
    if (text == nullptr) {
        return out;
    }
    const int length = static_cast<int>(StrLen(text));
    const int size = Utf16ToUtf8(text, length, nullptr, 0);
    if (size > 0) {
        out.resize(static_cast<std::size_t>(size));
        Utf16ToUtf8(text, length, out.data(), size);
    }
    return out;
}

} // namespace Quillanor::Common::Detail
