// Base64 of RFC 4648 (standard alphabet, '=' padding, no line breaks) over UTF-16 text.
//
// Decoding is deliberately lenient inside the character range '+'..'z': characters of that
// range that are not in the alphabet (such as ':' or '[') are not rejected, they contribute
// the value 255 and give wrong bits. Any character outside the range makes the whole decode
// fail with -1. A last group cut short is read as if completed with '='. Decode never writes
// more bytes than the count it returns for the same text. All static, thread-safe.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Array.h"
#include "Engine/Common/Base/String.h"

namespace Quillanor::Common {

class QC_API cBase64 {
public:
    // Writes 4 characters per 3 bytes (the last group padded), no terminator; returns the
    // number of characters, 0 for a length below 1. pOut needs EncodedLength(pLength).
    static int Encode(const unsigned char* pData, int pLength, char16_t* pOut);
    static int EncodedLength(int pLength) { return pLength < 1 ? 0 : (pLength + 2) / 3 * 4; }

    // Decodes pLength characters; returns the number of bytes, or -1 for a character outside
    // '+'..'z'. With a null pOut it only counts.
    static int Decode(const char16_t* pText, int pLength, unsigned char* pOut);

    // Encode into a string (reserved at its final size first).
    static cString EncodeS(const unsigned char* pData, int pLength);
    // Decode of a whole string, with the same result and null-pOut rule as Decode.
    static int DecodeS(const cString& pText, unsigned char* pOut);
    // Counts, sizes pOut to the count and decodes; false (pOut unchanged) for invalid text.
    static bool DecodeS(const cString& pText, tArray<unsigned char>& pOut);
};

} // namespace Quillanor::Common
