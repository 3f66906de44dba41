// CRC-32 and MD5 split-point consistency: the digest of a buffer equals the digest of the same
// buffer fed in pieces whose sizes the fuzzer chooses; both CRC-32 paths agree.
#include "Engine/Common/Base/Crc32.h"
#include "Engine/Common/Base/Md5.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace qc = Quillanor::Common;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    // The first two bytes seed the piece sizes; the rest is the message.
    unsigned seed = data[0] | (unsigned(data[1]) << 8);
    const std::uint8_t* message = data + 2;
    const std::size_t length = size - 2;

    const unsigned whole = qc::crc32(0, message, length);
    if (whole != qc::Detail::Crc32Portable(0, message, length) ||
        whole != qc::Detail::Crc32Clmul(0, message, length)) {
        std::abort();
    }
    qc::md5_state_t state;
    qc::md5_init(&state);
    qc::md5_append(&state, message, length);
    qc::md5_byte_t digest[16];
    qc::md5_finish(&state, digest);

    unsigned crc = 0;
    qc::md5_init(&state);
    std::size_t pos = 0;
    while (pos < length) {
        seed = seed * 1103515245u + 12345u;
        std::size_t piece = (seed >> 8) % 300;
        if (piece > length - pos) {
            piece = length - pos;
        }
        crc = qc::crc32(crc, message + pos, piece);
        qc::md5_append(&state, message + pos, piece);
        pos += piece;
    }
    qc::md5_byte_t pieces[16];
    qc::md5_finish(&state, pieces);
    if (crc != whole || std::memcmp(digest, pieces, 16) != 0) {
        std::abort();
    }
    return 0;
}
