// The vector kernels of comparison and UTF-8 decoding against the plain loops, on random text
// built to hit their edge cases, at every kernel level the processor has.
#include "Engine/Common/Base/Detail/TextSimd.h"
#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace Quillanor::Common;

namespace {

// Restores the detected kernel level when a test ends.
struct sLevelGuard {
    ~sLevelGuard() { Detail::SetTextSimdLevel(-1); }
};

// The comparison rule written out: the first unit whose upper-case forms differ decides,
// unless a zero ends both texts first; a text ends in its terminator.
int ModelCompare(const std::u16string& a, const std::u16string& b) {
    for (std::size_t i = 0;; ++i) {
        const char16_t x = ToUpper(i < a.size() ? a[i] : u'\0');
        const char16_t y = ToUpper(i < b.size() ? b[i] : u'\0');
        if (x != y) {
            return static_cast<int>(x) - static_cast<int>(y);
        }
        if (x == 0) {
            return 0;
        }
    }
}

// Units around the ASCII letters (and their 0x20 partners that are not letters), case pairs
// beyond ASCII and units whose low byte looks like a letter.
const char16_t kUnits[] = {u'a',   u'z',   u'A',   u'Z',   u'm',   u'M',   u'@',   u'`',
                           u'[',   u'{',   u'0',   u' ',   u'_',   u'~',   0x00E9, 0x00C9,
                           0x017F, 0x0131, 0x0130, 0x212A, 0x03C3, 0x03A3, 0x0461, 0x0441,
                           0x0141, 0x0161, 0xFF41, 0xFF21, 0xD800, 0xDC00, 0x0000};

std::u16string RandomText(std::mt19937& rng, std::size_t length) {
    std::u16string text;
    std::uniform_int_distribution<int> kind(0, 9);
    std::uniform_int_distribution<int> letter(0, 25);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(kUnits) - 2); // no zero
    for (std::size_t i = 0; i < length; ++i) {
        const int k = kind(rng);
        text += k < 7 ? static_cast<char16_t>(u'a' + letter(rng)) : kUnits[pick(rng)];
    }
    return text;
}

// A partner text: case flips, a changed unit, a zero, a different length.
std::u16string Mutate(std::mt19937& rng, std::u16string text) {
    std::uniform_int_distribution<int> what(0, 9);
    for (int round = what(rng) % 4; round >= 0; --round) {
        if (text.empty()) {
            break;
        }
        std::uniform_int_distribution<std::size_t> at(0, text.size() - 1);
        const std::size_t i = at(rng);
        switch (what(rng)) {
        case 0:
        case 1:
        case 2:
        case 3:
            if (static_cast<unsigned>((text[i] | 0x20) - u'a') < 26u) {
                text[i] = static_cast<char16_t>(text[i] ^ 0x20);
            }
            break;
        case 4:
            for (char16_t& c : text) {
                c = ToUpper(c);
            }
            break;
        case 5:
            text[i] =
                kUnits[std::uniform_int_distribution<std::size_t>(0, std::size(kUnits) - 1)(rng)];
            break;
        case 6:
            text[i] = static_cast<char16_t>(text[i] ^ 0x20);
            break;
        case 7:
            text.resize(i);
            break;
        default:
            text += RandomText(rng, at(rng) % 40);
            break;
        }
    }
    return text;
}

} // namespace

TEST(TextSimdTest, CaseInsensitiveCompareMatchesTheRule) {
    sLevelGuard guard;
    const int top = Detail::SetTextSimdLevel(-1);
    for (int level = 0; level <= top; ++level) {
        ASSERT_EQ(Detail::SetTextSimdLevel(level), level);
        std::mt19937 rng(17);
        std::uniform_int_distribution<std::size_t> length(0, 200);
        for (int n = 0; n < 4000; ++n) {
            const std::u16string a = RandomText(rng, length(rng) % (n % 3 == 0 ? 20 : 200));
            const std::u16string b = Mutate(rng, a);
            const cString sa(a.data(), static_cast<int>(a.size()));
            const cString sb(b.data(), static_cast<int>(b.size()));
            const int expected = ModelCompare(a, b);
            ASSERT_EQ(sa.Compare(sb), expected) << "level " << level << " case " << n;
            ASSERT_EQ(sb.Compare(sa), -expected) << "level " << level << " case " << n;
            ASSERT_EQ(sa == sb, expected == 0);
        }
    }
}

TEST(TextSimdTest, CompareAtEveryPositionAndLength) {
    // One difference (or one case flip, or a zero) at each place of each length around the
    // block sizes.
    sLevelGuard guard;
    const int top = Detail::SetTextSimdLevel(-1);
    for (int level = 0; level <= top; ++level) {
        Detail::SetTextSimdLevel(level);
        std::mt19937 rng(5);
        for (std::size_t length = 1; length <= 140; ++length) {
            const std::u16string a = RandomText(rng, length);
            for (std::size_t i = 0; i < length; ++i) {
                for (int variant = 0; variant < 4; ++variant) {
                    std::u16string b = a;
                    const char16_t flipped = static_cast<char16_t>(a[i] ^ 0x20);
                    const char16_t units[] = {u'\0', flipped, 0x017F, u'`'};
                    b[i] = units[variant];
                    const cString sa(a.data(), static_cast<int>(a.size()));
                    const cString sb(b.data(), static_cast<int>(b.size()));
                    ASSERT_EQ(sa.Compare(sb), ModelCompare(a, b))
                        << "level " << level << " length " << length << " at " << i;
                }
            }
        }
    }
}

namespace {

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Mostly runs of three-byte sequences, broken by ASCII, other lengths, ill-formed three-byte
// forms (overlong, surrogates, truncated, bad continuation) and stray bytes.
std::string RandomUtf8(std::mt19937& rng, std::size_t units) {
    std::string text;
    std::uniform_int_distribution<int> kind(0, 99);
    std::uniform_int_distribution<unsigned> any(0, 0xFFFF);
    std::uniform_int_distribution<unsigned> low(0, 0x3F);
    std::uniform_int_distribution<unsigned> byte(0, 255);
    for (std::size_t i = 0; i < units; ++i) {
        const int k = kind(rng);
        if (k < 80) {
            char32_t c = 0x800 + any(rng) % (0x10000 - 0x800);
            if (c >= 0xD800 && c <= 0xDFFF) {
                c += 0x800;
            }
            AppendUtf8(text, c);
        } else if (k < 84) {
            text += static_cast<char>('a' + low(rng) % 26);
        } else if (k < 86) {
            AppendUtf8(text, 0x80 + any(rng) % 0x780);
        } else if (k < 88) {
            AppendUtf8(text, 0x10000 + any(rng) * 16);
        } else if (k < 90) { // overlong three-byte form
            text += '\xE0';
            text += static_cast<char>(0x80 | low(rng) % 0x20);
            text += static_cast<char>(0x80 | low(rng));
        } else if (k < 92) { // encoded surrogate
            text += '\xED';
            text += static_cast<char>(0xA0 | low(rng) % 0x20);
            text += static_cast<char>(0x80 | low(rng));
        } else if (k < 94) { // truncated
            text += static_cast<char>(0xE1 + low(rng) % 12);
            text += static_cast<char>(0x80 | low(rng));
        } else if (k < 96) { // second continuation byte is not one
            text += static_cast<char>(0xE1 + low(rng) % 12);
            text += static_cast<char>(0x80 | low(rng));
            text += static_cast<char>(low(rng) % 2 == 0 ? 0xC0 | low(rng) : low(rng));
        } else {
            text += static_cast<char>(byte(rng));
        }
    }
    return text;
}

std::u16string Decode(const std::string& bytes, std::size_t room) {
    std::vector<char16_t> out(room == 0 ? 1 : room);
    const int n = cUtils::ToWideChar(65001, bytes.data(), static_cast<int>(bytes.size()),
                                     out.data(), static_cast<int>(room));
    return std::u16string(out.data(), static_cast<std::size_t>(n));
}

} // namespace

TEST(TextSimdTest, Utf8DecodingMatchesThePlainLoop) {
    sLevelGuard guard;
    const int top = Detail::SetTextSimdLevel(-1);
    std::mt19937 rng(23);
    std::uniform_int_distribution<std::size_t> length(0, 300);
    for (int n = 0; n < 3000; ++n) {
        const std::string bytes = RandomUtf8(rng, length(rng));
        Detail::SetTextSimdLevel(0);
        // Room for one unit per byte takes the unchecked path, the exact count the checked one.
        const std::u16string expected = Decode(bytes, bytes.size());
        ASSERT_EQ(Decode(bytes, expected.size()), expected);
        ASSERT_EQ(cUtils::WideCharLen(65001, bytes.data(), static_cast<int>(bytes.size())),
                  static_cast<int>(expected.size()));
        for (int level = 1; level <= top; ++level) {
            Detail::SetTextSimdLevel(level);
            ASSERT_EQ(Decode(bytes, bytes.size()), expected) << "level " << level << " case " << n;
            ASSERT_EQ(Decode(bytes, expected.size()), expected);
        }
    }
}

TEST(TextSimdTest, Utf8DecodingOfEveryThreeByteForm) {
    // Every lead and second byte of a three-byte sequence, well-formed or not, in the middle of
    // a run long enough for the vector code, at each of the positions of its block.
    sLevelGuard guard;
    const int top = Detail::SetTextSimdLevel(-1);
    std::string run;
    for (char32_t c = 0x4E00; c < 0x4E00 + 12; ++c) {
        AppendUtf8(run, c);
    }
    for (unsigned lead = 0xE0; lead <= 0xEF; ++lead) {
        for (unsigned second = 0x70; second <= 0xC5; ++second) {
            for (std::size_t shift = 0; shift < 6; ++shift) {
                std::string bytes = run.substr(0, 3 * shift);
                bytes += static_cast<char>(lead);
                bytes += static_cast<char>(second);
                bytes += '\xA5';
                bytes += run;
                Detail::SetTextSimdLevel(0);
                const std::u16string expected = Decode(bytes, bytes.size());
                for (int level = 1; level <= top; ++level) {
                    Detail::SetTextSimdLevel(level);
                    ASSERT_EQ(Decode(bytes, bytes.size()), expected)
                        << std::hex << lead << " " << second << " shift " << shift;
                }
            }
        }
    }
}
