// The cUtils formatter: every supported numeric conversion, flag, width and precision
// against the C library's snprintf, the Windows conventions for text arguments, and the ring.
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace Quillanor::Common;

namespace {

std::u16string Widen(const std::string& s) {
    return std::u16string(s.begin(), s.end());
}

const char* const kFlags[] = {"", "-", "+", " ", "#", "0", "-+", "+0", " 0", "#0", "-#", "-+ #0"};
const char* const kWidths[] = {"", "1", "8", "25"};
const char* const kPrecisions[] = {"", ".", ".0", ".1", ".3", ".10", ".17"};

// Some C libraries (mingw-w64's printf family) deviate from the C standard in a few corners:
// a space flag on unsigned conversions, no "0" for %#.0o of zero, and zero padding despite '-'
// for %a. Where the reference is wrong itself, the combination is counted, not compared.
int gReferenceDeviations = 0;

bool ReferenceDeviates(const std::string& spec, char conv) {
    static const bool spaceOnUnsigned = [] {
        char b[8];
        const std::string format = "% u"; // not a literal: the compiler would object to it
        std::snprintf(b, sizeof(b), format.c_str(), 0u);
        return b[0] == ' ';
    }();
    static const bool zeroDespiteMinus = [] {
        char b[32];
        const std::string format = "%-012a";
        std::snprintf(b, sizeof(b), format.c_str(), 1.0);
        return std::string(b).find(' ') == std::string::npos;
    }();
    static const bool noOctalZero = [] {
        char b[8];
        const std::string format = "%#.0o";
        std::snprintf(b, sizeof(b), format.c_str(), 0u);
        return b[0] == 0;
    }();
    const std::string flags = spec.substr(0, spec.find_first_not_of("-+ #0"));
    const std::string::size_type dot = spec.find('.');
    const bool zeroPrecision =
        dot != std::string::npos && (spec.substr(dot) == "." || spec.substr(dot) == ".0");
    const bool space = flags.find(' ') != std::string::npos;
    const bool leftZero =
        flags.find('-') != std::string::npos && flags.find('0') != std::string::npos;
    const bool isUnsigned = conv == 'u' || conv == 'x' || conv == 'X' || conv == 'o';
    const bool isHexFloat = conv == 'a' || conv == 'A';
    const bool alternate = flags.find('#') != std::string::npos;
    return (spaceOnUnsigned && space && isUnsigned) ||
           (noOctalZero && alternate && conv == 'o' && zeroPrecision) ||
           (zeroDespiteMinus && leftZero && isHexFloat);
}

void ReportDeviations() {
    if (gReferenceDeviations > 0) {
        std::printf("[   NOTE   ] %d combinations not compared: this C library's snprintf "
                    "deviates from the C standard there\n",
                    gReferenceDeviations);
        gReferenceDeviations = 0;
    }
}

// Formats `value` with "%<spec><conv>" (ours, narrow and wide) and with snprintf using
// `libcLength` in place of `ourLength`, and expects the same text.
template <class T>
void Check(const std::string& spec, const char* ourLength, const char* libcLength, char conv,
           T value) {
    if (ReferenceDeviates(spec, conv)) {
        ++gReferenceDeviations;
        return;
    }
    const std::string ours = "%" + spec + ourLength + conv;
    const std::string libc = "%" + spec + libcLength + conv;
    char expected[512];
    std::snprintf(expected, sizeof(expected), libc.c_str(), value);
    const char* narrow = cUtils::FmtStrA(ours.c_str(), value);
    ASSERT_STREQ(narrow, expected) << "format " << ours;
    const std::u16string wideFormat = Widen(ours);
    const char16_t* wide = cUtils::FmtStr(wideFormat.c_str(), value);
    ASSERT_EQ(std::u16string(wide), Widen(expected)) << "format " << ours;
}

int FormatInto(char16_t* buffer, int size, const char16_t* format, ...) {
    va_list args;
    va_start(args, format);
    const int n = cUtils::Format(buffer, size, format, args);
    va_end(args);
    return n;
}

} // namespace

TEST(FormatTest, IntegersMatchSnprintf) {
    const long long values[] = {0, 1, -1, 42, -42, 255, 4096, INT_MIN, INT_MAX, 123456789};
    const char* const convs = "diuxXo";
    int checked = 0;
    for (const char* flags : kFlags) {
        for (const char* width : kWidths) {
            for (const char* precision : kPrecisions) {
                const std::string spec = std::string(flags) + width + precision;
                for (const char* c = convs; *c != 0; ++c) {
                    for (long long v : values) {
                        Check(spec, "", "", *c, static_cast<int>(v));
                        Check(spec, "h", "h", *c, static_cast<int>(v));
                        Check(spec, "hh", "hh", *c, static_cast<int>(v));
                        Check(spec, "l", "l", *c, static_cast<long>(v * 1000003));
                        Check(spec, "ll", "ll", *c, v * 1000000007LL);
                        Check(spec, "I64", "ll", *c, v * 1000000007LL);
                        Check(spec, "I32", "", *c, static_cast<int>(v));
                        Check(spec, "z", "z", *c, static_cast<std::size_t>(v));
                        Check(spec, "I", "z", *c, static_cast<std::size_t>(v));
                        checked += 9;
                    }
                }
                Check(spec, "ll", "ll", 'd', LLONG_MIN);
                Check(spec, "ll", "ll", 'u', ULLONG_MAX);
            }
        }
    }
    EXPECT_GT(checked, 10000);
    ReportDeviations();
}

TEST(FormatTest, FloatsMatchSnprintf) {
    const double values[] = {0.0,
                             -0.0,
                             1.0,
                             -1.5,
                             0.1,
                             3.14159265358979,
                             2.5,
                             1e-10,
                             123456789.0,
                             9.9999996,
                             0.000123456,
                             1e300,
                             -4.9e-5,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    const char* const convs = "eEfFgGaA";
    for (const char* flags : kFlags) {
        for (const char* width : kWidths) {
            for (const char* precision : kPrecisions) {
                const std::string spec = std::string(flags) + width + precision;
                for (const char* c = convs; *c != 0; ++c) {
                    for (double v : values) {
                        if ((*c == 'a' || *c == 'A') && std::string(precision).size() > 1 &&
                            std::isfinite(v) && v != 0.0) {
                            // Rounded hexadecimal output: compared below on exact cases only.
                            continue;
                        }
                        Check(spec, "", "", *c, v);
                    }
                }
            }
        }
    }
    Check("", "", "", 'a', 1.0);
    Check(".2", "", "", 'a', 1.5);
    Check(".1", "", "", 'A', 3.0);
    Check("#.0", "", "", 'a', 1.0);
    ReportDeviations();
}

TEST(FormatTest, StarWidthAndPrecision) {
    char expected[64];
    std::snprintf(expected, sizeof(expected), "[%*.*f|%-*d|%.*s]", 10, 3, 3.14159, 6, 42, 2, "abc");
    EXPECT_STREQ(cUtils::FmtStrA("[%*.*f|%-*d|%.*s]", 10, 3, 3.14159, 6, 42, 2, "abc"), expected);
    std::snprintf(expected, sizeof(expected), "[%*d|%.*f]", -5, 7, -1, 2.5);
    EXPECT_STREQ(cUtils::FmtStrA("[%*d|%.*f]", -5, 7, -1, 2.5), expected);
}

TEST(FormatTest, WindowsTextConventions) {
    // Wide format: %s and %c wide, %S / %hs / %hc narrow (UTF-8).
    EXPECT_EQ(std::u16string(
                  cUtils::FmtStr(u"%s|%S|%hs|%ls|%ws", u"w\u00E9", "n\xC3\xA9", "h", u"l", u"w")),
              u"w\u00E9|n\u00E9|h|l|w");
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"%c%C%hc%lc", u'\u0416', 'a', 'b', u'c')),
              u"\u0416abc");
    EXPECT_EQ(
        std::u16string(cUtils::FmtStr(u"[%5s][%-5s][%.2s][%3S]", u"ab", u"ab", u"abcdef", "x")),
        u"[   ab][ab   ][ab][  x]");
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"%s %S", static_cast<const char16_t*>(nullptr),
                                            static_cast<const char*>(nullptr))),
              u"(null) (null)");
    // Narrow format: %s narrow, %S / %ls / %ws wide (to UTF-8).
    EXPECT_STREQ(cUtils::FmtStrA("%s|%S|%ls|%ws|%hs", "n", u"\u00E9", u"l", u"w", "h"),
                 "n|\xC3\xA9|l|w|h");
    EXPECT_STREQ(cUtils::FmtStrA("%c%C%lc", 'x', u'\u00E9', u'y'), "x\xC3\xA9y");
    EXPECT_STREQ(cUtils::FmtStrA("100%% %5%|"), "100% %|");
    // %p: 16 upper-case hexadecimal digits.
    EXPECT_STREQ(cUtils::FmtStrA("%p", reinterpret_cast<void*>(0xABCDEF)), "0000000000ABCDEF");
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"%I64d %I64X", -5LL, 0xFFLL)), u"-5 FF");
    // The layout of the stream error messages.
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"Position: %08X", 0x1A2Bu)), u"Position: 00001A2B");
}

TEST(FormatTest, OverflowAndBadFormatsGiveEmptyText) {
    const std::u16string fits(1023, u'x');
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"%s", fits.c_str())), fits);
    const std::u16string tooLong(1024, u'x');
    EXPECT_EQ(std::u16string(cUtils::FmtStr(u"%s", tooLong.c_str())), u"");
    EXPECT_STREQ(cUtils::FmtStrA("%2000d", 1), "");
    EXPECT_STREQ(cUtils::FmtStrA("%1023d", 1), std::string(1022, ' ').append("1").c_str());
    EXPECT_STREQ(cUtils::FmtStrA("%.1020f", 1.0), "");
    EXPECT_STREQ(cUtils::FmtStrA("abc%"), "");
    EXPECT_STREQ(cUtils::FmtStrA("%y", 1), "");
    int n = 0;
    EXPECT_STREQ(cUtils::FmtStrA("x%n", &n), "");
    char16_t small[4];
    EXPECT_EQ(FormatInto(small, 4, u"a%c", u'b'), 2);
    EXPECT_EQ(std::u16string(small), u"ab");
    EXPECT_EQ(FormatInto(small, 4, u"%d", 1234), -1);
    EXPECT_EQ(small[0], 0);
}

TEST(FormatTest, RingOfBuffers) {
    const char16_t* first = cUtils::FmtStr(u"%d", 1);
    std::set<const void*> seen{first};
    for (int i = 0; i < 99; ++i) {
        seen.insert(cUtils::GetFmtStrBuff());
    }
    EXPECT_EQ(seen.size(), 100u);
    // The 101st call reuses the first call's buffer.
    const char16_t* again = cUtils::FmtStr(u"%d", 2);
    EXPECT_EQ(again, first);
    const char* narrow = cUtils::FmtStrA("%s", "n");
    EXPECT_EQ(seen.count(narrow), 1u); // the narrow results share the ring
}

TEST(FormatTest, ConcurrentCallersGetDistinctBuffers) {
    // Each round two threads take 40 buffers each (80 < 100): every result must be intact
    // after both have finished, and no buffer may have been handed out twice.
    for (int round = 0; round < 50; ++round) {
        std::vector<const char16_t*> results[2];
        auto work = [&](int id) {
            for (int i = 0; i < 40; ++i) {
                results[id].push_back(cUtils::FmtStr(u"%d-%d-%d", id, round, i));
            }
        };
        std::thread a(work, 0);
        std::thread b(work, 1);
        a.join();
        b.join();
        std::set<const char16_t*> distinct;
        for (int id = 0; id < 2; ++id) {
            for (int i = 0; i < 40; ++i) {
                char expected[32];
                std::snprintf(expected, sizeof(expected), "%d-%d-%d", id, round, i);
                ASSERT_EQ(std::u16string(results[id][static_cast<std::size_t>(i)]),
                          Widen(expected));
                distinct.insert(results[id][static_cast<std::size_t>(i)]);
            }
        }
        ASSERT_EQ(distinct.size(), 80u);
    }
}

TEST(FormatTest, LastErrorStr) {
    const std::u16string text = cUtils::LastErrorStr(ENOENT);
    EXPECT_FALSE(text.empty());
    EXPECT_NE(text.back(), u'\n');
    EXPECT_NE(text.back(), u'\r');
    EXPECT_EQ(std::u16string(cUtils::LastErrorStr(987654)), u"");
    EXPECT_EQ(std::u16string(cUtils::LastErrorStr(ENOENT, u"module.dll")), u"");
}
