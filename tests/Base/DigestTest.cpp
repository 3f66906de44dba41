#include "Engine/Common/Base/Base64.h"
#include "Engine/Common/Base/Crc32.h"
#include "Engine/Common/Base/Md5.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#if QC_TEST_HAVE_PEERS
#include <openssl/evp.h>
#include <zlib.h>
#endif

namespace qc = Quillanor::Common;

namespace {

std::vector<unsigned char> RandomBytes(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<unsigned char> v(n);
    for (auto& b : v) {
        b = static_cast<unsigned char>(rng());
    }
    return v;
}

std::string Md5Hex(const void* data, std::size_t n) {
    qc::md5_state_t st;
    qc::md5_init(&st);
    qc::md5_append(&st, static_cast<const qc::md5_byte_t*>(data), n);
    qc::md5_byte_t digest[16];
    qc::md5_finish(&st, digest);
    static const char hex[] = "0123456789abcdef";
    std::string s;
    for (auto b : digest) {
        s += hex[b >> 4];
        s += hex[b & 15];
    }
    return s;
}

std::u16string Encode(const std::string& bytes) {
    std::u16string out(static_cast<std::size_t>(qc::cBase64::EncodedLength(int(bytes.size()))),
                       u'?');
    const int n = qc::cBase64::Encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                                      int(bytes.size()), out.data());
    EXPECT_EQ(n, int(out.size()));
    return out;
}

// Decodes into a buffer with guard bytes after the counted size; checks they stay intact.
int Decode(const std::u16string& text, std::vector<unsigned char>& out) {
    const int count = qc::cBase64::Decode(text.data(), int(text.size()), nullptr);
    if (count < 0) {
        return count;
    }
    std::vector<unsigned char> buf(static_cast<std::size_t>(count) + 8, 0xA5);
    EXPECT_EQ(qc::cBase64::Decode(text.data(), int(text.size()), buf.data()), count);
    for (std::size_t i = std::size_t(count); i < buf.size(); ++i) {
        EXPECT_EQ(buf[i], 0xA5) << "written past the counted size";
    }
    out.assign(buf.begin(), buf.begin() + count);
    return count;
}

} // namespace

TEST(Crc32, PublishedVectorsAndContinuation) {
    EXPECT_EQ(qc::crc32(0, "123456789", 9), 0xCBF43926u);
    EXPECT_EQ(qc::crc32(0, "", 0), 0u);
    EXPECT_EQ(qc::crc32(0x12345678, nullptr, 10), 0u); // null data: the initial value
    EXPECT_EQ(qc::crc32(0, "The quick brown fox jumps over the lazy dog", 43), 0x414FA339u);
    const std::vector<unsigned char> zeros(32, 0);
    EXPECT_EQ(qc::crc32(0, zeros.data(), 32), 0x190A55ADu);
    const std::vector<unsigned char> ones(32, 0xFF);
    EXPECT_EQ(qc::crc32(0, ones.data(), 32), 0xFF6CAB0Bu);
    // Continuing over pieces gives the CRC of the whole, on both paths.
    const auto data = RandomBytes(5000, 1);
    const unsigned whole = qc::crc32(0, data.data(), data.size());
    for (std::size_t cut : {0u, 1u, 63u, 64u, 255u, 256u, 1000u, 4999u, 5000u}) {
        unsigned c = qc::crc32(0, data.data(), cut);
        EXPECT_EQ(qc::crc32(c, data.data() + cut, data.size() - cut), whole) << cut;
        c = qc::Detail::Crc32Portable(0, data.data(), cut);
        EXPECT_EQ(qc::Detail::Crc32Clmul(c, data.data() + cut, data.size() - cut), whole) << cut;
    }
}

TEST(Crc32, BothPathsAgreeForEveryLengthAndStart) {
    const auto data = RandomBytes(2100, 2);
    std::mt19937 rng(3);
    for (std::size_t len = 0; len <= 1100; ++len) {
        const unsigned start = len % 3 == 0 ? 0u : unsigned(rng());
        const std::size_t offset = len % 16; // unaligned starts too
        const unsigned a = qc::Detail::Crc32Portable(start, data.data() + offset, len);
        const unsigned b = qc::Detail::Crc32Clmul(start, data.data() + offset, len);
        ASSERT_EQ(a, b) << "length " << len;
        ASSERT_EQ(qc::crc32(start, data.data() + offset, len), a);
    }
    if (!qc::Detail::Crc32HasClmul()) {
        GTEST_SKIP() << "no carry-less multiply on this processor: one path compared with itself";
    }
}

TEST(Md5, Rfc1321TestSuite) {
    EXPECT_EQ(Md5Hex("", 0), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(Md5Hex("a", 1), "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_EQ(Md5Hex("abc", 3), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(Md5Hex("message digest", 14), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(Md5Hex("abcdefghijklmnopqrstuvwxyz", 26), "c3fcd3d76192e4007dfb496cca67e13b");
    const char* alnum = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    EXPECT_EQ(Md5Hex(alnum, 62), "d174ab98d277d9f5a5611c2c9f419d9f");
    const std::string digits =
        "12345678901234567890123456789012345678901234567890123456789012345678901234567890";
    EXPECT_EQ(Md5Hex(digits.data(), digits.size()), "57edf4a22be3c955ac49da2e2107b67a");
}

TEST(Md5, PiecesGiveTheDigestOfTheWhole) {
    const auto data = RandomBytes(3000, 4);
    const std::string whole = Md5Hex(data.data(), data.size());
    std::mt19937 rng(5);
    for (int round = 0; round < 50; ++round) {
        qc::md5_state_t st;
        qc::md5_init(&st);
        std::size_t pos = 0;
        while (pos < data.size()) {
            const std::size_t n = std::min<std::size_t>(rng() % 150, data.size() - pos);
            qc::md5_append(&st, data.data() + pos, n);
            pos += n;
        }
        qc::md5_byte_t digest[16];
        qc::md5_finish(&st, digest);
        std::string hex;
        for (auto b : digest) {
            char two[3];
            std::snprintf(two, sizeof two, "%02x", b);
            hex += two;
        }
        ASSERT_EQ(hex, whole);
    }
}

#if QC_TEST_HAVE_PEERS
TEST(DigestPeers, Crc32AndMd5MatchZlibAndOpenSsl) {
    std::mt19937 rng(6);
    for (int round = 0; round < 200; ++round) {
        const std::size_t n = round < 100 ? std::size_t(round) * 7 : rng() % 200000;
        const auto data = RandomBytes(n, unsigned(round));
        const unsigned start = round % 2 ? unsigned(rng()) : 0u;
        ASSERT_EQ(qc::crc32(start, data.data(), n),
                  ::crc32(start, data.data(), static_cast<uInt>(n)))
            << n;
        unsigned char ref[16];
        unsigned int refLen = 0;
        ASSERT_EQ(EVP_Digest(data.data(), n, ref, &refLen, EVP_md5(), nullptr), 1);
        qc::md5_state_t st;
        qc::md5_init(&st);
        qc::md5_append(&st, data.data(), n);
        qc::md5_byte_t mine[16];
        qc::md5_finish(&st, mine);
        ASSERT_EQ(std::memcmp(mine, ref, 16), 0) << n;
    }
}

TEST(DigestPeers, Base64MatchesOpenSsl) {
    for (int n = 0; n < 300; ++n) {
        const auto data = RandomBytes(std::size_t(n), unsigned(n) + 100);
        std::vector<unsigned char> ref(std::size_t(n) / 3 * 4 + 5);
        const int refLen = EVP_EncodeBlock(ref.data(), data.data(), n);
        std::u16string mine = Encode(std::string(data.begin(), data.end()));
        ASSERT_EQ(std::u16string(ref.begin(), ref.begin() + refLen), mine);
        std::vector<unsigned char> back;
        ASSERT_EQ(Decode(mine, back), n);
        ASSERT_EQ(back, data);
    }
}
#else
// A cross toolchain without zlib and OpenSSL for the target: the comparisons run natively.
TEST(DigestPeers, Crc32AndMd5MatchZlibAndOpenSsl) {
    GTEST_SKIP() << "zlib and OpenSSL are not available for this target";
}

TEST(DigestPeers, Base64MatchesOpenSsl) {
    GTEST_SKIP() << "OpenSSL is not available for this target";
}
#endif

TEST(Base64, EncodeAndDecodeWithTheirEdges) {
    EXPECT_EQ(Encode("Man"), u"TWFu");
    EXPECT_EQ(Encode("M"), u"TQ==");
    EXPECT_EQ(Encode("Ma"), u"TWE=");
    EXPECT_EQ(Encode("any carnal pleasure."), u"YW55IGNhcm5hbCBwbGVhc3VyZS4=");
    EXPECT_EQ(qc::cBase64::Encode(reinterpret_cast<const unsigned char*>("x"), 0, nullptr), 0);
    EXPECT_EQ(qc::cBase64::Encode(reinterpret_cast<const unsigned char*>("x"), -4, nullptr), 0);

    std::vector<unsigned char> out;
    EXPECT_EQ(Decode(u"TWE=", out), 2);
    EXPECT_EQ(std::string(out.begin(), out.end()), "Ma");
    EXPECT_EQ(Decode(u"TWFuTQ==", out), 4);
    EXPECT_EQ(std::string(out.begin(), out.end()), "ManM");
    // A short last group is completed with '='.
    EXPECT_EQ(Decode(u"TWFuTWE", out), 5);
    EXPECT_EQ(std::string(out.begin(), out.end()), "ManMa");
    EXPECT_EQ(Decode(u"TQ", out), 1);
    EXPECT_EQ(Decode(u"T", out), 0);
    EXPECT_EQ(Decode(u"====", out), 0);
    EXPECT_EQ(Decode(u"", out), 0);

    // Outside '+'..'z' fails; inside but not in the alphabet gives wrong bits, not an error.
    EXPECT_EQ(Decode(u"TW Fu", out), -1);
    EXPECT_EQ(Decode(u"TWF\u00e9", out), -1);
    EXPECT_EQ(Decode(u"TWFu{", out), -1);
    EXPECT_EQ(Decode(u"TW[u", out), 3);
    EXPECT_NE(std::string(out.begin(), out.end()), "Man");
    EXPECT_EQ(Decode(u"T:Fu", out), 3);
}

TEST(Base64, RandomTextNeverWritesPastItsCount) {
    std::mt19937 rng(7);
    const char16_t pool[] = u"ABCxyz019+/=[:^ \n\u00ff\uffff";
    for (int round = 0; round < 3000; ++round) {
        std::u16string text(rng() % 40, u'A');
        for (auto& c : text) {
            c = pool[rng() % (sizeof(pool) / sizeof(pool[0]) - 1)];
        }
        std::vector<unsigned char> out;
        const int n = Decode(text, out);
        ASSERT_GE(n, -1);
        ASSERT_LE(n, int(text.size() + 3) / 4 * 3);
    }
}
