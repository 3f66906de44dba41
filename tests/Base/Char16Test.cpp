// The char16_t functions, the case table and the cUtils text, number and code-page helpers.
#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <cwctype>
#include <string>
#include <vector>

using namespace Quillanor::Common;

TEST(Char16Test, CaseTableKnownPairs) {
    const char16_t pairs[][2] = {
        {u'a', u'A'},     {u'z', u'Z'},     {0x00E9, 0x00C9}, {0x00FF, 0x0178},
        {0x0451, 0x0401}, {0x0436, 0x0416}, {0x03C9, 0x03A9}, {0x0101, 0x0100},
        {0x01C6, 0x01C4}, {0x1F80, 0x1F88}, {0xFF41, 0xFF21}, {0x2170, 0x2160},
        {0x0561, 0x0531}, {0x00B5, 0x039C}, {0x0131, u'I'},   {0x017F, u'S'},
    };
    for (const auto& pair : pairs) {
        EXPECT_EQ(ToUpper(pair[0]), pair[1]) << std::hex << int(pair[0]);
        EXPECT_EQ(ToUpper(pair[1]), pair[1]) << std::hex << int(pair[1]);
    }
    EXPECT_EQ(ToLower(0x00C9), 0x00E9);
    EXPECT_EQ(ToLower(0x0401), 0x0451);
    EXPECT_EQ(ToLower(0x0130), u'i');
    EXPECT_EQ(ToLower(u'Q'), u'q');
    // No simple mapping: sharp s, digits, CJK, surrogates map to themselves.
    for (char16_t c : {char16_t(0x00DF), char16_t(u'5'), char16_t(0x4E2D), char16_t(0xD800),
                       char16_t(0xDFFF), char16_t(u'_'), char16_t(0xFFFF)}) {
        EXPECT_EQ(ToUpper(c), c);
        EXPECT_EQ(ToLower(c), c);
    }
    // ASCII fast path agrees with the table, and every lower-case ASCII letter is covered.
    for (char16_t c = 0; c < 0x80; ++c) {
        EXPECT_EQ(ToUpper(c), Detail::ToUpperTable(c));
        EXPECT_EQ(ToLower(c), Detail::ToLowerTable(c));
    }
    EXPECT_EQ(ToUpperA('q'), 'Q');
    EXPECT_EQ(ToUpperA('\xE9'), '\xE9');
}

TEST(Char16Test, CaseRuleIsConsistent) {
    // Upper-casing is idempotent and lower/upper round-trip for every cased BMP letter whose
    // upper form maps back.
    int mapped = 0;
    for (unsigned c = 0; c <= 0xFFFF; ++c) {
        const char16_t u = ToUpper(static_cast<char16_t>(c));
        EXPECT_EQ(ToUpper(u), u) << std::hex << c;
        mapped += u != c;
    }
    EXPECT_GT(mapped, 1000);
    EXPECT_LT(mapped, 1500);
}

TEST(Char16Test, LengthCompareSearch) {
    EXPECT_EQ(StrLen(u""), 0u);
    EXPECT_EQ(StrLen(u"abc"), 3u);
    EXPECT_EQ(StrCmp(u"abc", u"abc"), 0);
    EXPECT_LT(StrCmp(u"abc", u"abd"), 0);
    EXPECT_GT(StrCmp(u"abc", u"ab"), 0);
    EXPECT_GT(StrCmp(u"\uFFFF", u"a"), 0); // unsigned units
    EXPECT_EQ(StrNCmp(u"abcx", u"abcy", 3), 0);
    EXPECT_NE(StrNCmp(u"abcx", u"abcy", 4), 0);
    EXPECT_EQ(StrICmp(u"HeLLo \u00C9", u"hello \u00E9"), 0);
    EXPECT_LT(StrICmp(u"apple", u"BANANA"), 0);
    EXPECT_GT(StrICmp(u"b", u"A"), 0);
    EXPECT_LT(StrICmp(u"ab", u"ABC"), 0);
    EXPECT_EQ(StrNICmp(u"ABCx", u"abcy", 3), 0);
    EXPECT_EQ(StrICmpA("MiXeD", "mixed"), 0);
    EXPECT_EQ(StrNICmpA("MiXeD1", "mixed2", 5), 0);
    EXPECT_NE(StrICmpA("\xC9", "\xE9"), 0); // narrow case rule is ASCII only
    const char16_t* text = u"abcabc";
    EXPECT_EQ(StrChr(text, u'c'), text + 2);
    EXPECT_EQ(StrChr(text, u'z'), nullptr);
    EXPECT_EQ(StrChr(text, 0), text + 6);
    EXPECT_EQ(StrRChr(text, u'a'), text + 3);
    EXPECT_EQ(StrRChr(text, u'z'), nullptr);
    EXPECT_EQ(StrStr(text, u"ca"), text + 2);
    EXPECT_EQ(StrStr(text, u""), text);
    EXPECT_EQ(StrStr(text, u"cb"), nullptr);
    EXPECT_EQ(StrStr(text, u"abcabcd"), nullptr);
    EXPECT_EQ(StrIStr(text, u"CA"), text + 2);
    EXPECT_EQ(StrCSpn(u"hello, world", u" ,"), 5u);
    EXPECT_EQ(StrCSpn(u"hello", u"xyz"), 5u);
}

TEST(Char16Test, IsSpace) {
    for (char16_t c : u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000") {
        if (c != 0) {
            EXPECT_TRUE(IsSpace(c)) << std::hex << int(c);
        }
    }
    for (char16_t c : u"a0_\u200B\uFEFF\u0008") {
        EXPECT_FALSE(IsSpace(c)) << std::hex << int(c);
    }
}

TEST(Char16Test, IntegerParsingMatchesStrtol) {
    const char* const inputs[] = {"0",
                                  "42",
                                  "  -17",
                                  "+9",
                                  "0x1F",
                                  "0X1f",
                                  "017",
                                  "0x",
                                  "12abc",
                                  "",
                                  "   ",
                                  "-",
                                  "2147483647",
                                  "2147483648",
                                  "-2147483648",
                                  "-2147483649",
                                  "99999999999999999999",
                                  "z",
                                  "0b1",
                                  "\t\n 5"};
    const int bases[] = {0, 8, 10, 16, 36, 2};
    for (const char* input : inputs) {
        if (std::strcmp(input, "0x") == 0) {
            continue; // checked below: C libraries disagree on it
        }
        const std::u16string wide(input, input + std::strlen(input));
        for (int base : bases) {
            char* narrowEnd = nullptr;
            long long expected = std::strtoll(input, &narrowEnd, base);
            expected = expected > INT_MAX ? INT_MAX : expected < INT_MIN ? INT_MIN : expected;
            const char16_t* end = nullptr;
            EXPECT_EQ(StrToL(wide.c_str(), &end, base), expected) << input << " base " << base;
            EXPECT_EQ(end - wide.c_str(), narrowEnd - input) << input << " base " << base;
            EXPECT_EQ(StrToLL(wide.c_str(), nullptr, base), std::strtoll(input, nullptr, base))
                << input;
            EXPECT_EQ(StrToULL(wide.c_str(), nullptr, base), std::strtoull(input, nullptr, base))
                << input;
        }
    }
    // "0x" without a hexadecimal digit is the number 0 followed by an 'x' (some C libraries
    // wrongly consume nothing).
    const char16_t* end = nullptr;
    EXPECT_EQ(StrToL(u"0x", &end, 16), 0);
    EXPECT_EQ(*end, u'x');
    EXPECT_EQ(StrToL(u"0x", &end, 0), 0);
    EXPECT_EQ(*end, u'x');
    EXPECT_EQ(StrToUL(u"-1", nullptr, 10), 0xFFFFFFFFu);
    EXPECT_EQ(StrToI(u" 123xyz"), 123);
    EXPECT_EQ(StrToL(u"10", nullptr, 1), 0);
}

TEST(Char16Test, FloatParsingMatchesStrtod) {
    const char* const inputs[] = {"0",
                                  "1.5",
                                  "  -2.25e3",
                                  "+.5",
                                  "5.",
                                  "1e",
                                  "1e+",
                                  "0x1p4",
                                  "0x1.8p1",
                                  "0x.8",
                                  "0x",
                                  "inf",
                                  "-INFINITY",
                                  "nan",
                                  "NaN(123)",
                                  "1e400",
                                  "-1e400",
                                  "1e-400",
                                  "4.9e-324",
                                  "abc",
                                  "",
                                  ".",
                                  "-.e1",
                                  "12.5xyz",
                                  "0.000000000000000000000000000000000000000000001e-300",
                                  "123456789012345678901234567890",
                                  "1.7976931348623157e308"};
    for (const char* input : inputs) {
        const std::u16string wide(input, input + std::strlen(input));
        char* narrowEnd = nullptr;
        const double expected = std::strtod(input, &narrowEnd);
        const char16_t* end = nullptr;
        const double value = StrToD(wide.c_str(), &end);
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(value)) << input;
        } else {
            EXPECT_EQ(value, expected) << input;
        }
        EXPECT_EQ(end - wide.c_str(), narrowEnd - input) << input;
    }
    EXPECT_EQ(StrToF(u"2.5"), 2.5);
}

TEST(UtilsTest, SearchAndDigits) {
    const char16_t* text = u"Hello World";
    EXPECT_EQ(cUtils::StrIStr(text, u"WORLD"), text + 6);
    EXPECT_EQ(cUtils::StrIStr(text, u""), text);
    EXPECT_EQ(cUtils::StrIStr(u"", u"a"), nullptr);
    EXPECT_EQ(cUtils::StrIStr(text, u"worlds"), nullptr);
    const char16_t* accented = u"\u00C9T\u00C9";
    EXPECT_EQ(cUtils::StrIStr(accented, u"t\u00E9"), accented + 1);
    const char* narrow = "Hello World";
    EXPECT_EQ(cUtils::AStrIStr(narrow, "o w"), narrow + 4);
    EXPECT_EQ(cUtils::AStrIStr(narrow, ""), narrow);
    EXPECT_EQ(cUtils::AStrIStr("", "x"), nullptr);
    EXPECT_EQ(cUtils::AStrIStr(narrow, "xyz"), nullptr);
    EXPECT_EQ(cUtils::HexDigitToInt(u'0'), 0);
    EXPECT_EQ(cUtils::HexDigitToInt(u'9'), 9);
    EXPECT_EQ(cUtils::HexDigitToInt(u'a'), 10);
    EXPECT_EQ(cUtils::HexDigitToInt(u'F'), 15);
    EXPECT_EQ(cUtils::HexDigitToInt(u'g'), -1);
    EXPECT_EQ(cUtils::HexDigitToInt(u' '), -1);
}

TEST(UtilsTest, NumberParsingFailRule) {
    bool fail = false;
    EXPECT_EQ(cUtils::StrToIntW(u"12x", &fail, 10, true), 12);
    EXPECT_TRUE(fail);
    EXPECT_EQ(cUtils::StrToIntW(u"12x", &fail, 10, false), 12);
    EXPECT_FALSE(fail);
    EXPECT_EQ(cUtils::StrToIntW(u"x12", &fail, 10, false), 0);
    EXPECT_TRUE(fail);
    EXPECT_EQ(cUtils::StrToIntW(u"ff", &fail, 16, true), 255);
    EXPECT_FALSE(fail);
    EXPECT_EQ(cUtils::StrToIntW(u"-7"), -7);
    EXPECT_EQ(cUtils::StrToFloat(u"1.25", &fail, true), 1.25);
    EXPECT_FALSE(fail);
    EXPECT_EQ(cUtils::StrToFloat(u"1.25 ", &fail, true), 1.25);
    EXPECT_TRUE(fail);
    EXPECT_EQ(cUtils::StrToFloat(u"", &fail), 0.0);
    EXPECT_TRUE(fail);
}

TEST(UtilsTest, RevEndian) {
    EXPECT_EQ(cUtils::RevEndian(static_cast<short>(0x1234)), static_cast<short>(0x3412));
    EXPECT_EQ(cUtils::RevEndian(0x12345678), 0x78563412);
    EXPECT_EQ(cUtils::RevEndian(0x0102030405060708LL), 0x0807060504030201LL);
    EXPECT_EQ(cUtils::RevEndian(cUtils::RevEndian(3.75f)), 3.75f);
    EXPECT_EQ(cUtils::RevEndian(cUtils::RevEndian(-2.5e-7)), -2.5e-7);
    const float f = cUtils::RevEndian(1.0f); // 0x3F800000 reversed is 0x0000803F
    unsigned int bits;
    std::memcpy(&bits, &f, 4);
    EXPECT_EQ(bits, 0x0000803Fu);
}

TEST(UtilsTest, Utf8RoundTripOfEveryCodePoint) {
    std::u16string all;
    for (char32_t cp = 1; cp <= 0x10FFFF; ++cp) {
        if (cp >= 0xD800 && cp <= 0xDFFF) {
            continue;
        }
        if (cp >= 0x10000) {
            all += static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
            all += static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            all += static_cast<char16_t>(cp);
        }
    }
    const int length = static_cast<int>(all.size());
    const int bytes = cUtils::MultibyteLen(65001, all.data(), length);
    // 127 one-byte, 1920 two-byte, 61440 three-byte (surrogates excluded), 1048576 four-byte.
    EXPECT_EQ(bytes, 127 + 1920 * 2 + 61440 * 3 + 1048576 * 4);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    ASSERT_EQ(cUtils::ToMultibyte(65001, all.data(), length, utf8.data(), bytes), bytes);
    EXPECT_EQ(cUtils::WideCharLen(65001, utf8.data(), bytes), length);
    std::u16string back(static_cast<std::size_t>(length), u'\0');
    ASSERT_EQ(cUtils::ToWideChar(65001, utf8.data(), bytes, back.data(), length), length);
    EXPECT_EQ(back, all);
    // The same into an output with room for one unit per input byte (the unchecked path).
    std::u16string roomy(static_cast<std::size_t>(bytes), u'\0');
    ASSERT_EQ(cUtils::ToWideChar(65001, utf8.data(), bytes, roomy.data(), bytes), length);
    EXPECT_EQ(roomy.substr(0, static_cast<std::size_t>(length)), all);
    // Too small an output gives 0.
    EXPECT_EQ(cUtils::ToWideChar(65001, utf8.data(), bytes, back.data(), length - 1), 0);
    EXPECT_EQ(cUtils::ToMultibyte(65001, all.data(), length, utf8.data(), bytes - 1), 0);
    // UTF-16LE bytes round trip.
    std::string le(static_cast<std::size_t>(length) * 2, '\0');
    ASSERT_EQ(cUtils::ToMultibyte(1200, all.data(), length, le.data(), length * 2), length * 2);
    EXPECT_EQ(static_cast<unsigned char>(le[0]), 1);
    EXPECT_EQ(le[1], 0);
    std::u16string back16(static_cast<std::size_t>(length), u'\0');
    ASSERT_EQ(cUtils::ToWideChar(1200, le.data(), length * 2, back16.data(), length), length);
    EXPECT_EQ(back16, all);
}

TEST(UtilsTest, IllFormedInputBecomesReplacementCharacters) {
    struct sCase {
        const char* bytes;
        std::u16string expected;
    };
    const sCase cases[] = {
        {"a\x80"
         "b",
         u"a\uFFFDb"},
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                     // overlong
        {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},           // overlong three-byte
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // encoded surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above U+10FFFF
        {"\xE2\x82", u"\uFFFD"},                           // truncated: one maximal subpart
        {"\xE2\x82x", u"\uFFFDx"},
        {"\xF0\x9F\x98", u"\uFFFD"},
        {"\xFF\xFE", u"\uFFFD\uFFFD"},
    };
    for (const sCase& c : cases) {
        const int length = static_cast<int>(std::strlen(c.bytes));
        char16_t out[16];
        const int n = cUtils::ToWideChar(65001, c.bytes, length, out, 16);
        EXPECT_EQ(std::u16string(out, static_cast<std::size_t>(n)), c.expected) << c.bytes;
        EXPECT_EQ(cUtils::WideCharLen(65001, c.bytes, length), n);
    }
    // Unpaired surrogates to UTF-8 and to UTF-16LE.
    const char16_t lone[] = {u'a', 0xD800, u'b', 0xDC00};
    char out[16];
    const int n = cUtils::ToMultibyte(65001, lone, 4, out, 16);
    EXPECT_EQ(std::string(out, static_cast<std::size_t>(n)), "a\xEF\xBF\xBD"
                                                             "b\xEF\xBF\xBD");
    char16_t wide[4];
    EXPECT_EQ(cUtils::ToWideChar(1200, "a\0\0\xD8", 4, wide, 4), 2);
    EXPECT_EQ(wide[1], 0xFFFD);
    EXPECT_EQ(cUtils::ToWideChar(1200, "a\0b", 3, wide, 4), 2); // odd trailing byte
    EXPECT_EQ(wide[1], 0xFFFD);
}

TEST(UtilsTest, CodePageForms) {
    // A negative length includes the terminator, as the Windows functions do.
    EXPECT_EQ(cUtils::WideCharLen(65001, "abc", -1), 4);
    EXPECT_EQ(cUtils::MultibyteLen(65001, u"abc", -1), 4);
    EXPECT_EQ(cUtils::WideCharLen(65001, "abc", 0), 0);
    EXPECT_EQ(cUtils::WideCharLen(65001, nullptr, 3), 0);
    // Code pages through the system's converter.
    char16_t wide[8];
    EXPECT_EQ(cUtils::ToWideChar(1252, "\x80\xE9", 2, wide, 8), 2);
    EXPECT_EQ(wide[0], 0x20AC);
    EXPECT_EQ(wide[1], 0x00E9);
    EXPECT_EQ(cUtils::ToWideChar(437, "\x82", 1, wide, 8), 1);
    EXPECT_EQ(wide[0], 0x00E9);
    EXPECT_EQ(cUtils::ToWideChar(932, "\x82\xA0", 2, wide, 8), 1); // Shift-JIS hiragana a
    EXPECT_EQ(wide[0], 0x3042);
    char narrow[8];
    EXPECT_EQ(cUtils::ToMultibyte(1252, u"\u20AC\u4E2D", 2, narrow, 8), 2);
    EXPECT_EQ(std::string(narrow, 2), "\x80?"); // no 1252 form: the default character
    EXPECT_EQ(cUtils::MultibyteLen(932, u"\u3042", 1), 2);
    EXPECT_EQ(cUtils::ToMultibyte(1252, u"abc", 3, narrow, 2), 0); // too small
    // Unknown code pages give nothing.
    EXPECT_EQ(cUtils::WideCharLen(4242, "abc", 3), 0);
    EXPECT_EQ(cUtils::MultibyteLen(4242, u"abc", 3), 0);
}
