// cString and cAString: sharing, copy-on-write, growth, editing, comparison, substrings and
// code pages.
#include "Engine/Common/Base/String.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using namespace Quillanor::Common;

namespace {

std::u16string Str(const cString& s) {
    return std::u16string(s.Text(), s.Length());
}

} // namespace

TEST(StringTest, ConstructionForms) {
    EXPECT_EQ(cString().Length(), 0);
    EXPECT_EQ(cString().Size(), 1);
    EXPECT_EQ(Str(cString(u'x', 3)), u"xxx");
    EXPECT_EQ(Str(cString(u"hello")), u"hello");
    EXPECT_EQ(Str(cString(u"hello", 3)), u"hel");
    EXPECT_EQ(cString(static_cast<const char16_t*>(nullptr)).Length(), 0);
    EXPECT_EQ(cString(nullptr, 4).Length(), 0);
    cString reserved(32);
    EXPECT_EQ(reserved.Length(), 0);
    EXPECT_EQ(reserved.Size(), 32);
    EXPECT_EQ(*static_cast<const char16_t*>(cString()), 0);
    EXPECT_TRUE(!cString());
    EXPECT_FALSE(!cString(u"a"));
    EXPECT_EQ(Str(cString(0, "gr\xC3\xBC\xC3\x9F", -1, 65001)), u"gr\u00FC\u00DF");
    EXPECT_EQ(Str(cString(0, "abcdef", 3, 65001)), u"abc");
}

TEST(StringTest, EmptyStringsShareOneBuffer) {
    cString a;
    cString b;
    EXPECT_EQ(a.Text(), b.Text());
    EXPECT_EQ(a.Text(), cString::Empty().Text());
    cString c(u"text");
    c.Reset();
    EXPECT_EQ(c.Text(), a.Text());
    EXPECT_EQ(c.Length(), 0);
    // Writing to an empty string never touches the shared buffer.
    a += u'x';
    EXPECT_EQ(Str(a), u"x");
    EXPECT_EQ(Str(b), u"");
    EXPECT_EQ(cString::Empty().Length(), 0);
    EXPECT_EQ(*cString::Empty().Text(), 0);
}

TEST(StringTest, CopiesShareUntilWritten) {
    cString a(u"Hello");
    cString b = a;
    EXPECT_EQ(a.Text(), b.Text());
    b.SetChar(0, u'J');
    EXPECT_EQ(Str(a), u"Hello");
    EXPECT_EQ(Str(b), u"Jello");
    EXPECT_NE(a.Text(), b.Text());

    cString c = a;
    c.GetWritable()[1] = u'a';
    EXPECT_EQ(Str(a), u"Hello");
    EXPECT_EQ(Str(c), u"Hallo");

    // Every kind of writer unshares.
    const auto writers = std::vector<void (*)(cString&)>{
        [](cString& s) { s += u'!'; },      [](cString& s) { s.Clear(); },
        [](cString& s) { s.SetLength(2); }, [](cString& s) { s.Remove(0, 1); },
        [](cString& s) { s.ToUpper(); },    [](cString& s) { s.Fill(u'z'); },
        [](cString& s) { s -= u"pre"; },    [](cString& s) { s.Replace(u"l", u"L"); },
        [](cString& s) { s.TrimRight(); },  [](cString& s) { s.RemoveFromEnd(1); },
        [](cString& s) { s = u"other"; },   [](cString& s) { s.SetSize(3); },
    };
    for (auto writer : writers) {
        cString source(u"Hello ");
        cString copy = source;
        writer(copy);
        EXPECT_EQ(Str(source), u"Hello ");
    }

    cString d = a;
    d = a; // same buffer: nothing happens
    EXPECT_EQ(d.Text(), a.Text());
    cString moved = std::move(d);
    EXPECT_EQ(moved.Text(), a.Text());
    EXPECT_EQ(d.Length(), 0); // NOLINT(bugprone-use-after-move): the moved-from state is empty
}

TEST(StringTest, GrowthIsExact) {
    cString s;
    EXPECT_EQ(s.Size(), 1);
    for (int i = 1; i <= 20; ++i) {
        const char16_t* before = s.Text();
        s += static_cast<char16_t>(u'a' + i % 26);
        EXPECT_EQ(s.Size(), i + 1);
        EXPECT_NE(s.Text(), before); // capacity was full: a new buffer every time
    }
    s << u"0123456789";
    EXPECT_EQ(s.Size(), 31);
    // Shrinking keeps the capacity; text that fits is written in place.
    s.RemoveFromEnd(10);
    EXPECT_EQ(s.Size(), 31);
    const char16_t* before = s.Text();
    s << u"abc";
    EXPECT_EQ(s.Text(), before);
    cString reserved(64);
    const char16_t* reservedText = reserved.Text();
    for (int i = 0; i < 63; ++i) {
        reserved += u'x';
    }
    EXPECT_EQ(reserved.Text(), reservedText);
    EXPECT_EQ(reserved.Size(), 64);
}

TEST(StringTest, LengthAndSize) {
    cString s(u"ab");
    s.SetLength(5);
    EXPECT_EQ(Str(s), u"ab   ");
    s.SetLength(1);
    EXPECT_EQ(Str(s), u"a");
    s.SetSize(10);
    EXPECT_EQ(s.Size(), 10);
    EXPECT_EQ(Str(s), u"a");
    cString t(u"abcdef");
    t.SetSize(3);
    EXPECT_EQ(Str(t), u"ab");
    EXPECT_EQ(t.Size(), 3);
    cString u(u"abc");
    const int size = u.Size();
    u.Clear();
    EXPECT_EQ(u.Length(), 0);
    EXPECT_EQ(u.Size(), size);
}

TEST(StringTest, AppendPrependInsertRemove) {
    cString s(u"world");
    s -= u"hello";
    EXPECT_EQ(Str(s), u"helloworld");
    s -= u'>';
    EXPECT_EQ(Str(s), u">helloworld");
    s -= cString(u"[");
    EXPECT_EQ(Str(s), u"[>helloworld");
    cString a(u"ab");
    a += u'\0';
    EXPECT_EQ(a.Length(), 2);
    a << u"cd" << cString(u"ef");
    a.Append(u"ghij", 2).Append(cString(u"k"));
    EXPECT_EQ(Str(a), u"abcdefghk");
    a.Append(a); // appending itself
    EXPECT_EQ(Str(a), u"abcdefghkabcdefghk");

    cString b(u"abc");
    b.Insert(u"XY", 1);
    EXPECT_EQ(Str(b), u"aXYbc");
    b.Insert(u"!", 100);
    EXPECT_EQ(Str(b), u"aXYbc!");
    b.Insert(u"<", -5);
    EXPECT_EQ(Str(b), u"<aXYbc!");
    b.Insert(u"12345", 2, 1);
    EXPECT_EQ(Str(b), u"<12aXYbc!");
    b.Insert(b.Text() + 1, 2, 0); // inserting a piece of itself
    EXPECT_EQ(Str(b), u"12<12aXYbc!");

    cString r(u"0123456789");
    r.Remove(2, 3);
    EXPECT_EQ(Str(r), u"0156789");
    r.Remove(5, 100);
    EXPECT_EQ(Str(r), u"01567");
    r.Remove(10, 1);
    r.Remove(1, 0);
    EXPECT_EQ(Str(r), u"01567");
    r.RemoveFromEnd(2);
    EXPECT_EQ(Str(r), u"015");
    r.RemoveFromEnd(3);
    EXPECT_EQ(Str(r), u"");
    cString e;
    e.Remove(0, 5);
    EXPECT_EQ(e.Length(), 0);
}

TEST(StringTest, FillTrimCase) {
    cString s(u"abc");
    s.Fill(u'-');
    EXPECT_EQ(Str(s), u"---");
    cString t(u" \t\u3000 mid dle \r\n\u00A0");
    t.Trim();
    EXPECT_EQ(Str(t), u"mid dle");
    cString l(u"  x  ");
    l.TrimLeft();
    EXPECT_EQ(Str(l), u"x  ");
    l.TrimRight();
    EXPECT_EQ(Str(l), u"x");
    cString blank(u"   ");
    blank.Trim();
    EXPECT_EQ(blank.Length(), 0);
    cString c(u"Stra\u00DFe \u00E9t\u00E9 \u0451");
    c.ToUpper();
    EXPECT_EQ(Str(c), u"STRA\u00DFE \u00C9T\u00C9 \u0401");
    c.ToLower();
    EXPECT_EQ(Str(c), u"stra\u00DFe \u00E9t\u00E9 \u0451");
}

TEST(StringTest, ReplaceAndReplaceAll) {
    cString s(u"aaa");
    EXPECT_EQ(s.ReplaceAll(u"a", u"aa", 0, true), 3);
    EXPECT_EQ(Str(s), u"aaaaaa");
    cString t(u"One two ONE three one");
    EXPECT_EQ(t.Replace(u"one", u"1", 0, true), 18);
    EXPECT_EQ(Str(t), u"One two ONE three 1");
    EXPECT_EQ(t.Replace(u"one", u"#", 0, false), 0);
    EXPECT_EQ(Str(t), u"# two ONE three 1");
    EXPECT_EQ(t.ReplaceAll(u"ONE", nullptr, 0, false), 1);
    EXPECT_EQ(Str(t), u"# two  three 1");
    EXPECT_EQ(t.Replace(u"", u"x"), -1);
    EXPECT_EQ(t.Replace(nullptr, u"x"), -1);
    EXPECT_EQ(t.Replace(u"t", u"x", 100), -1);
    EXPECT_EQ(t.ReplaceAll(u"t", u"T", 6), 1);
    EXPECT_EQ(Str(t), u"# two  Three 1");
    cString u(u"xyxyx");
    EXPECT_EQ(u.ReplaceAll(cString(u"xy"), cString(u"z")), 2);
    EXPECT_EQ(Str(u), u"zzx");
    cString longer(u"a-b-c");
    EXPECT_EQ(longer.ReplaceAll(u"-", u" -- "), 2);
    EXPECT_EQ(Str(longer), u"a -- b -- c");
    cString self(u"abab");
    EXPECT_EQ(self.ReplaceAll(self.Text() + 2, u"x"), 2); // the needle points into itself
    EXPECT_EQ(Str(self), u"xx");

    cAString n("aAa");
    EXPECT_EQ(n.ReplaceAll("a", "b"), 2);
    EXPECT_STREQ(n.Text(), "bAb");
    EXPECT_EQ(n.Replace("a", "c", 0, false), 1);
    EXPECT_STREQ(n.Text(), "bcb");
}

TEST(StringTest, ComparisonCaseRules) {
    const cString a(u"Abc");
    const cString b(u"aBC");
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    EXPECT_FALSE(a.Equals(b));
    EXPECT_TRUE(a.Equals(u"Abc"));
    EXPECT_FALSE(a.Equals(u"Ab"));
    EXPECT_TRUE(a == u"ABC");
    EXPECT_TRUE(u"abc" == a);
    EXPECT_EQ(a.Compare(b), 0);
    EXPECT_NE(a.CompareCS(b), 0);
    EXPECT_EQ(a.CompareCS(u"Abc"), 0);
    EXPECT_EQ(cString(u"a").CompareCS(u"b"), -1);
    EXPECT_EQ(cString(u"b").CompareCS(u"a"), 1);
    EXPECT_EQ(cString(u"ab").CompareCS(cString(u"a")), 1);
    EXPECT_TRUE(cString(u"apple") < cString(u"Banana"));
    EXPECT_TRUE(cString(u"Banana") > u"apple");
    EXPECT_TRUE(cString(u"abc") <= u"ABC");
    EXPECT_TRUE(cString(u"abc") >= u"ABC");
    EXPECT_TRUE(u"a" < cString(u"B"));
    EXPECT_TRUE(cString(u"ab") > cString(u"A"));
    // Null right side is the empty string.
    const char16_t* null = nullptr;
    EXPECT_TRUE(cString() == null);
    EXPECT_FALSE(a == null);
    EXPECT_EQ(a.Compare(null), 1);
    EXPECT_EQ(cString().Compare(null), 0);
    EXPECT_TRUE(cString().Equals(null));
    // Non-ASCII case pairs.
    EXPECT_TRUE(cString(u"\u00E9t\u00E9") == u"\u00C9T\u00C9");
    EXPECT_TRUE(cString(u"\u0451\u0436") == u"\u0401\u0416");
    EXPECT_FALSE(cString(u"\u00E9") == u"E");
    // Long strings (block comparison) with a difference late and case differences early.
    std::u16string longA(300, u'q');
    std::u16string longB = longA;
    longB[3] = u'Q';
    EXPECT_TRUE(cString(longA.c_str()) == cString(longB.c_str()));
    longB[250] = u'r';
    EXPECT_TRUE(cString(longA.c_str()) < cString(longB.c_str()));
}

TEST(StringTest, PrefixPostfix) {
    const cString s(u"Hello.txt");
    EXPECT_TRUE(s.CheckPrefix(u"Hel"));
    EXPECT_FALSE(s.CheckPrefix(u"hel"));
    EXPECT_TRUE(s.CheckPrefix(u"hel", false));
    EXPECT_TRUE(s.CheckPrefix(nullptr));
    EXPECT_TRUE(s.CheckPrefix(u""));
    EXPECT_FALSE(s.CheckPrefix(u"Hello.txt!"));
    EXPECT_TRUE(s.CheckPostfix(u".txt"));
    EXPECT_FALSE(s.CheckPostfix(u".TXT"));
    EXPECT_TRUE(s.CheckPostfix(u".TXT", false));
    EXPECT_FALSE(s.CheckPostfix(u"xHello.txt"));
    EXPECT_TRUE(s.StartsWith(u"HELLO"));
    EXPECT_TRUE(s.EndsWith(u"O.TxT"));
    EXPECT_FALSE(s.EndsWith(u"x.txt"));
}

TEST(StringTest, FindAndCharIdx) {
    const cString s(u"abcABCabc");
    EXPECT_EQ(s.Find(u"ABC"), 0);
    EXPECT_EQ(s.Find(u"ABC", 1), 3);
    EXPECT_EQ(s.FindCS(u"ABC"), 3);
    EXPECT_EQ(s.FindCS(u"abc", 1), 6);
    EXPECT_EQ(s.Find(u"abc", -4), 0);
    EXPECT_EQ(s.Find(u"abc", 9), -1);
    EXPECT_EQ(s.Find(u""), -1);
    EXPECT_EQ(s.Find(static_cast<const char16_t*>(nullptr)), -1);
    EXPECT_EQ(s.Find(cString(u"cabc"), 6), -1); // does not fit after the start
    EXPECT_EQ(s.Find(cString(u"Cab")), 2);
    EXPECT_EQ(s.FindCS(cString(u"CAB")), -1);
    EXPECT_TRUE(s.Contains(u"CAB"));
    EXPECT_FALSE(s.ContainsCS(u"CAB"));
    EXPECT_TRUE(s.ContainsCS(cString(u"cA")));
    EXPECT_EQ(s.CharIdx(u'b'), 1);
    EXPECT_EQ(s.CharIdx(u'b', 2), 7);
    EXPECT_EQ(s.CharIdx(u'B'), 4);
    EXPECT_EQ(s.CharIdx(u'\0'), -1);
    EXPECT_EQ(s.CharIdx(u'z'), -1);
    EXPECT_EQ(s.CharLastIdx(u'a'), 6);
    EXPECT_EQ(s.CharLastIdx(u'\0'), -1);
}

TEST(StringTest, Substrings) {
    const cString s(u"0123456789");
    EXPECT_EQ(Str(s.SubStr(2, 3)), u"234");
    EXPECT_EQ(Str(s(8, 5)), u"89");
    EXPECT_EQ(Str(s.SubStr(-2, 5)), u"012");
    EXPECT_EQ(Str(s.SubStr(10, 1)), u"");
    EXPECT_EQ(Str(s.SubStr(3, 0)), u"");
    EXPECT_EQ(Str(s.SubStr(3, -1)), u"");
    EXPECT_EQ(Str(s.Left(3)), u"012");
    EXPECT_EQ(Str(s.Left(30)), u"0123456789");
    EXPECT_EQ(Str(s.Left(-1)), u"");
    EXPECT_EQ(Str(s.Right(3)), u"789");
    EXPECT_EQ(Str(s.Right(30)), u"0123456789");
    EXPECT_EQ(s.SubStr(0, 10).Text(), s.Text()); // the whole string is shared
    cString t;
    EXPECT_EQ(Str(t.SubStr(s, 1, 2)), u"12");
    EXPECT_EQ(Str(t.Left(s, 2)), u"01");
    EXPECT_EQ(Str(t.Right(s, 2)), u"89");

    int end = -1;
    const cString d(u"x,yy,z");
    EXPECT_EQ(Str(d.SubStr(u",", 0, &end)), u"yy");
    EXPECT_EQ(end, 5);
    EXPECT_EQ(Str(d.SubStr(u",", end - 1, &end)), u"z");
    EXPECT_EQ(end, 6);
    EXPECT_EQ(Str(d.SubStr(u";", 0, &end)), u"");
    EXPECT_EQ(end, 6);
    const cString w(u"aXbXXc");
    EXPECT_EQ(Str(w.SubStr(u"x", 0, &end)), u"b"); // the delimiter ignores case
    EXPECT_EQ(end, 4);
}

TEST(StringTest, Concatenation) {
    const cString a(u"ab");
    EXPECT_EQ(Str(a + cString(u"cd")), u"abcd");
    EXPECT_EQ(Str(a + u"x"), u"abx");
    EXPECT_EQ(Str(u"x" + a), u"xab");
    const cString c = a + u"cde";
    EXPECT_EQ(c.Size(), 6);
    EXPECT_EQ((cString() + cString()).Length(), 0);
}

TEST(StringTest, AssignmentForms) {
    cString s(u"abc");
    s = u'z';
    EXPECT_EQ(Str(s), u"z");
    s = u"hello";
    EXPECT_EQ(Str(s), u"hello");
    s.Set(u'q', 3);
    EXPECT_EQ(Str(s), u"qqq");
    s.Set(u"abcdef", 4);
    EXPECT_EQ(Str(s), u"abcd");
    s.Set(cString(u"12345"), 2);
    EXPECT_EQ(Str(s), u"12");
    const cString whole(u"whole");
    s.Set(whole, 99);
    EXPECT_EQ(s.Text(), whole.Text());
    s.Set(0, "\xE2\x82\xAC", -1, 65001);
    EXPECT_EQ(Str(s), u"\u20AC");
    s = s.Text() + 0; // self-assignment through a pointer
    EXPECT_EQ(Str(s), u"\u20AC");
    s = static_cast<const char16_t*>(nullptr);
    EXPECT_EQ(s.Length(), 0);
}

TEST(StringTest, CodePageConversion) {
    const cString s(u"gr\u00FC\u00DF \u20AC \U0001F600");
    EXPECT_EQ(s.AnsiLength(65001), 16);
    const cAString utf8 = s.AsAnsi(65001);
    EXPECT_STREQ(utf8.Text(), "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_TRUE(utf8.AsWideChar(65001).Equals(s));
    char buffer[64];
    EXPECT_STREQ(s.AsAnsi(buffer, sizeof(buffer), 65001), utf8.Text());
    EXPECT_STREQ(s.AsAnsi(buffer, -1, 65001), utf8.Text());
    EXPECT_STREQ(s.AsAnsi(buffer, 5, 65001), ""); // too small: empty
    const cAString latin = cString(u"caf\u00E9").AsAnsi(1252);
    EXPECT_STREQ(latin.Text(), "caf\xE9");
    EXPECT_TRUE(latin.AsWideChar(1252).Equals(u"caf\u00E9"));
    EXPECT_EQ(cString(u"abc").AsAnsi(999999).Length(), 0); // unknown code page
    EXPECT_EQ(cAString("x").WideCharLength(65001), 2);
    char16_t wide[8];
    EXPECT_TRUE(cString(cAString("abc").AsWideChar(wide, 8, 65001)).Equals(u"abc"));
    const cAString narrow(0, u"\u00E9", -1, 65001);
    EXPECT_STREQ(narrow.Text(), "\xC3\xA9");
}

TEST(AStringTest, MirrorsTheWideClass) {
    cAString a("Hello");
    cAString b = a;
    b.SetChar(0, 'J');
    EXPECT_STREQ(a.Text(), "Hello");
    EXPECT_STREQ(b.Text(), "Jello");
    EXPECT_TRUE(cAString("Abc") == "aBC");
    EXPECT_FALSE(cAString("Abc").Equals("aBC"));
    cAString c("ab");
    c.SetLength(4);
    EXPECT_STREQ(c.Text(), "ab  ");
    c -= "x";
    EXPECT_STREQ(c.Text(), "xab  ");
    c.Trim();
    EXPECT_STREQ(c.Text(), "xab");
    EXPECT_EQ(c.Find("AB"), 1);
    EXPECT_EQ(c.FindCS("AB"), -1);
    EXPECT_STREQ((c + "!").Text(), "xab!");
    EXPECT_STREQ(c.ToUpper().Text(), "XAB");
    int end = 0;
    EXPECT_STREQ(cAString("x,yy,z").SubStr(",", 0, &end).Text(), "yy");
    EXPECT_EQ(end, 5);
    cAString grow;
    for (int i = 1; i <= 5; ++i) {
        grow += 'a';
        EXPECT_EQ(grow.Size(), i + 1);
    }
}

// Strings sharing buffers copied, read and destroyed on two threads (run under tsan).
TEST(StringThreadTest, SharedBuffersAcrossThreads) {
    const cString shared(u"shared text that both threads copy");
    const cAString sharedNarrow("narrow shared text");
    auto work = [&](int seed) {
        std::vector<cString> copies;
        std::vector<cAString> narrowCopies;
        for (int i = 0; i < 2000; ++i) {
            copies.push_back(shared);
            narrowCopies.push_back(sharedNarrow);
            cString local = copies.back();
            local += static_cast<char16_t>(u'a' + seed); // unshares
            EXPECT_EQ(local.Length(), shared.Length() + 1);
            EXPECT_TRUE(copies.back() == shared);
            if (copies.size() > 16) {
                copies.erase(copies.begin());
                narrowCopies.erase(narrowCopies.begin());
            }
            cString empty;
            cString other = empty;
        }
    };
    std::thread t1(work, 1);
    std::thread t2(work, 2);
    t1.join();
    t2.join();
    EXPECT_EQ(Str(shared), u"shared text that both threads copy");
}

using StringDeathTest = testing::Test;

TEST(StringDeathTest, QuotedAssertions) {
    EXPECT_EXIT(cString(u"ab")[2], testing::ExitedWithCode(0), "pIdx>=0 && pIdx<mLength");
    EXPECT_EXIT(cString(u"ab").SetChar(-1, u'x'), testing::ExitedWithCode(0),
                "pIdx>=0 && pIdx<mLength");
    EXPECT_EXIT(cString(4), testing::ExitedWithCode(0), "pSize >= 8");
    EXPECT_EXIT(cString().SetLength(-1), testing::ExitedWithCode(0), "pNewLength >= 0");
    EXPECT_EXIT(cString().SetSize(0), testing::ExitedWithCode(0), "pNewSize > 0");
    EXPECT_EXIT(cAString("ab")[5], testing::ExitedWithCode(0), "pIdx>=0 && pIdx<mLength");
    EXPECT_EXIT(cAString(7), testing::ExitedWithCode(0), "pSize >= 8");
    EXPECT_EXIT(cAString().SetLength(-3), testing::ExitedWithCode(0), "pNewLength >= 0");
    EXPECT_EXIT(cAString().SetSize(-1), testing::ExitedWithCode(0), "pNewSize > 0");
}

TEST(StringTest, SplitAndJoin) {
    cStringArray parts;
    EXPECT_EQ(cString(u"a,,b").Split(parts, u","), 3);
    EXPECT_EQ(Str(parts[0]), u"a");
    EXPECT_EQ(Str(parts[1]), u"");
    EXPECT_EQ(Str(parts[2]), u"b");
    EXPECT_EQ(cString(u"a,,b").Split(parts, u",", true), 2);
    EXPECT_EQ(Str(parts[1]), u"b");
    EXPECT_EQ(cString(u"a,,b").Split(parts, u",", false, false, 2), 2);
    EXPECT_EQ(Str(parts[0]), u"a");
    EXPECT_EQ(Str(parts[1]), u",b");
    EXPECT_EQ(cString(u"x; y ;  ;z").Split(parts, u";,", false, true), 4);
    EXPECT_EQ(Str(parts[1]), u"y");
    EXPECT_EQ(Str(parts[2]), u""); // trims to empty and is kept
    EXPECT_EQ(cString(u"1 2,3").Split(parts, u" ,"), 3);
    EXPECT_EQ(Str(parts[2]), u"3");
    EXPECT_EQ(cString().Split(parts, u","), 1);
    EXPECT_EQ(parts[0].Length(), 0);
    EXPECT_EQ(cString().Split(parts, u",", true), 0);
    EXPECT_EQ(cString(u"a,").Split(parts, u","), 2);
    EXPECT_EQ(cString(u"abc").Split(parts, u""), 0);
    EXPECT_EQ(cString(u"abc").Split(parts, nullptr), 0);
    EXPECT_EQ(cString(u"a,b").Split(parts, u",", false, false, 0), 0);
    EXPECT_EQ(parts.Count(), 0);

    cString joined(u"old");
    cString(u"a,b,,c").Split(parts, u",");
    joined.Join(parts, u" + ");
    EXPECT_EQ(Str(joined), u"a + b +  + c");
    EXPECT_EQ(joined.Size(), joined.Length() + 1);
    joined.Join(parts, nullptr);
    EXPECT_EQ(Str(joined), u"abc");
    joined.Join(cStringArray(), u",");
    EXPECT_EQ(joined.Length(), 0);

    cAStringArray narrow;
    EXPECT_EQ(cAString("p|q").Split(narrow, "|"), 2);
    cAString n;
    n.Join(narrow, "-");
    EXPECT_STREQ(n.Text(), "p-q");
}
