// CRC-32 of IEEE 802.3 (reflected polynomial 0xEDB88320, pre- and post-inverted), with the
// interface and results of zlib's crc32: start with 0 and pass the previous result to continue
// over the next piece. A null pData returns 0 whatever the other arguments.
//
// Uses carry-less multiplication (PCLMULQDQ) when the processor has it, table-driven
// slicing otherwise; both give identical results. Thread-safe, no allocation.
#pragma once

#include "Engine/Common/Base/Api.h"

namespace Quillanor::Common {

QC_API unsigned int crc32(unsigned int pCrc, const void* pData, unsigned long long pLength);

namespace Detail {
// The individual paths, for tests that compare them. Crc32Clmul falls back to the portable
// path when the processor lacks carry-less multiplication (see Crc32HasClmul).
QC_API unsigned int Crc32Portable(unsigned int pCrc, const void* pData,
                                  unsigned long long pLength);
QC_API unsigned int Crc32Clmul(unsigned int pCrc, const void* pData, unsigned long long pLength);
QC_API bool Crc32HasClmul();
} // namespace Detail

} // namespace Quillanor::Common
