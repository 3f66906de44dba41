// Base64 decoding of arbitrary UTF-16 text: the counted size matches the decoded size, no
// byte is written past it (the sanitizer sees the exact-size heap block), and valid output
// of the encoder decodes back to the input.
#include "Engine/Common/Base/Base64.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace qc = Quillanor::Common;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The input read as UTF-16 code units; odd sizes lose the last byte.
    std::vector<char16_t> text(size / 2);
    if (!text.empty()) {
        std::memcpy(text.data(), data, text.size() * 2);
    }
    const int length = static_cast<int>(text.size());
    const int count = qc::cBase64::Decode(text.data(), length, nullptr);
    if (count < -1 || count > (length + 3) / 4 * 3) {
        std::abort();
    }
    if (count >= 0) {
        // An exact-size block (never empty, so a zero count still has a valid pointer).
        auto* out = static_cast<unsigned char*>(std::malloc(count > 0 ? std::size_t(count) : 1));
        if (qc::cBase64::Decode(text.data(), length, out) != count) {
            std::abort();
        }
        std::free(out);
    }

    // Round trip of the raw bytes.
    const int n = static_cast<int>(size);
    std::vector<char16_t> encoded(std::size_t(qc::cBase64::EncodedLength(n)) + 1);
    const int chars = qc::cBase64::Encode(data, n, encoded.data());
    std::vector<unsigned char> back(size + 1);
    if (qc::cBase64::Decode(encoded.data(), chars, back.data()) != n ||
        (n > 0 && std::memcmp(back.data(), data, size) != 0)) {
        std::abort();
    }
    return 0;
}
