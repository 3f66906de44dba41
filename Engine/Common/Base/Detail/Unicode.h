// UTF-8 and UTF-16LE codecs of the code-page conversions. Each converts `pLength` input units
// and returns the output units written, or the count needed when `pOut` is null; -1 when
// `pOut` is too small. Ill-formed input (each maximal ill-formed subpart of UTF-8, every
// unpaired surrogate, a lone trailing byte) becomes U+FFFD.
#pragma once

namespace Quillanor::Common::Detail {

int Utf8ToUtf16(const char* pText, int pLength, char16_t* pOut, int pOutLength);
int Utf16ToUtf8(const char16_t* pText, int pLength, char* pOut, int pOutLength);
int Utf16LeToUtf16(const char* pText, int pLength, char16_t* pOut, int pOutLength);
int Utf16ToUtf16Le(const char16_t* pText, int pLength, char* pOut, int pOutLength);

} // namespace Quillanor::Common::Detail
