// The MD5 message digest of RFC 1321, with the classic three-call interface: md5_init, then
// md5_append for each piece of the message (any sizes), then md5_finish for the 16-byte
// digest. The state is a plain record owned by the caller; no allocation, no shared state.
#pragma once

#include "Engine/Common/Base/Api.h"

#include <cstddef>

namespace Quillanor::Common {

typedef unsigned char md5_byte_t;
typedef unsigned int md5_word_t;

struct md5_state_t {
    unsigned long long count; // message length in bytes so far
    md5_word_t abcd[4];       // chaining variables A, B, C, D
    md5_byte_t buf[64];       // the current incomplete block
};

QC_API void md5_init(md5_state_t* pState);
QC_API void md5_append(md5_state_t* pState, const md5_byte_t* pData, std::size_t pLength);
QC_API void md5_finish(md5_state_t* pState, md5_byte_t pDigest[16]);

} // namespace Quillanor::Common
