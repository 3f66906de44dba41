#include "Engine/Common/Base/Dictionary.h"
#include "Engine/Common/Base/Array.h"
#include "Engine/Common/Base/Base64.h"
#include "Engine/Common/Base/EnumManager.h"
#include "Engine/Common/Base/Hash.h"
#include "Engine/Common/Base/TextManager.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

using namespace Quillanor::Common;

namespace {

// The shared buffer of a string (its first member), to check reference counts.
const cStrBuff* BuffOf(const cString& s) {
    static_assert(std::is_standard_layout_v<cString>);
    const cStrBuff* buff;
    std::memcpy(&buff, &s, sizeof buff);
    return buff;
}

cString Key(int i) {
    const std::string digits = std::to_string(i);
    return cString((u"key" + std::u16string(digits.begin(), digits.end())).c_str());
}

template <typename D>
std::vector<std::u16string> Keys(const D& d) {
    std::vector<std::u16string> out;
    for (const auto& item : d) {
        out.emplace_back(item.mKey.Text());
    }
    return out;
}

struct Point : cHashable {
    int mX = 0, mY = 0;
    Point(int x, int y) : mX(x), mY(y) {}
    unsigned int GetHash() const override { return unsigned(mX) * 31u + unsigned(mY); }
};

} // namespace

TEST(Hash, CaseInsensitiveSampledHash) {
    EXPECT_EQ(cHash::Get(u"abc"), cHash::Get(u"ABC"));
    EXPECT_EQ(cHash::Get("abc"), cHash::Get("AbC"));
    EXPECT_EQ(cHash::Get(u"abc"), cHash::Get("abc")); // same rule for ASCII text
    EXPECT_EQ(cHash::Get(u""), 0u);
    EXPECT_EQ(cHash::Get(static_cast<const char16_t*>(nullptr)), 0u);
    EXPECT_EQ(cHash::Get(u"\u00e9t\u00e9"), cHash::Get(u"\u00c9T\u00c9"));
    EXPECT_EQ(cHash::Get(cString(u"Name")), cHash::Get(u"NAME"));
    // The rule by hand for "a": h = 1; h ^= (h << 5) + (h >> 2) + 'A'.
    EXPECT_EQ(cHash::Get(u"a"), 1u ^ (32u + 0u + 65u));
    EXPECT_NE(cHash::Get(u"ab"), cHash::Get(u"ba"));
    // Texts of 64 characters and more are sampled every 3rd character: changing an unsampled
    // character keeps the hash, changing a sampled one does not.
    std::u16string longText(70, u'x');
    const unsigned base = cHash::Get(longText.c_str());
    longText[1] = u'y';
    EXPECT_EQ(cHash::Get(longText.c_str()), base);
    longText[3] = u'y';
    EXPECT_NE(cHash::Get(longText.c_str()), base);

    EXPECT_EQ(cHash::Get(7), 77u);
    EXPECT_EQ(cHash::Get(-1), 0xFFFFFFF5u); // wraps
    EXPECT_EQ(cHash::Get(Point(2, 3)), 65u);
}

TEST(Dictionary, CaseInsensitiveKeysInInsertionOrder) {
    tDictionary<cString, int, 255, cAllocator> d;
    d.Insert(u"Name", 1);
    d.Insert(u"beta", 2);
    d.Insert(u"gamma", 3);
    d.Insert(u"delta", 4);
    EXPECT_EQ(d.Count(), 4);
    ASSERT_NE(d.Find(u"NAME"), nullptr);
    EXPECT_EQ(*d.Find(u"name"), 1);
    EXPECT_TRUE(d.ContainsKey(u"BETA"));
    EXPECT_FALSE(d.ContainsKey(u"bet"));
    EXPECT_EQ(d.Find(u"missing"), nullptr);
    d[u"GAMMA"] = 30; // the same key
    EXPECT_EQ(d.Count(), 4);
    EXPECT_EQ(*d.Find(u"gamma"), 30);
    EXPECT_EQ(Keys(d), (std::vector<std::u16string>{u"Name", u"beta", u"gamma", u"delta"}));

    // Deleting a middle key keeps the order of the others; re-inserting goes to the end.
    EXPECT_TRUE(d.Delete(u"BETA"));
    EXPECT_FALSE(d.Delete(u"beta"));
    EXPECT_EQ(Keys(d), (std::vector<std::u16string>{u"Name", u"gamma", u"delta"}));
    d.Insert(u"Beta", 5);
    EXPECT_EQ(Keys(d), (std::vector<std::u16string>{u"Name", u"gamma", u"delta", u"Beta"}));
    EXPECT_EQ(d.First().mValue, 1);
    EXPECT_EQ(d.Last().mKey, u"beta");
    // Walking backwards, and deleting through iterators.
    std::vector<int> back;
    for (auto it = d.LastItem(); it; --it) {
        back.push_back(it.Value());
    }
    EXPECT_EQ(back, (std::vector<int>{5, 4, 30, 1}));
    for (auto it = d.begin(); it != d.end();) {
        it = it.Value() % 2 == 0 ? d.Delete(it) : ++it;
    }
    EXPECT_EQ(Keys(d), (std::vector<std::u16string>{u"Name", u"Beta"}));

    // Copies are deep and keep the order; moves leave the source empty.
    tDictionary<cString, int, 255, cAllocator> copy(d);
    *copy.Find(u"name") = 100;
    EXPECT_EQ(*d.Find(u"name"), 1);
    EXPECT_EQ(Keys(copy), Keys(d));
    tDictionary<cString, int, 255, cAllocator> moved(std::move(copy));
    EXPECT_EQ(copy.Count(), 0);
    EXPECT_EQ(*moved.Find(u"NAME"), 100);
    d = moved;
    EXPECT_EQ(*d.Find(u"NAME"), 100);
    d.Clear();
    EXPECT_TRUE(d.IsEmpty());
    EXPECT_EQ(d.begin(), d.end());
    d.Insert(u"again", 1);
    EXPECT_EQ(d.Count(), 1);
}

TEST(Dictionary, HundredThousandKeysAndIntegerKeys) {
    tDictionary<cString, int, 255, cAllocator> d;
    const int n = 100000;
    for (int i = 0; i < n; ++i) {
        d.Insert(Key(i), i);
    }
    EXPECT_EQ(d.Count(), n);
    for (int i = 0; i < n; i += 7) {
        const int* v = d.Find(Key(i));
        ASSERT_NE(v, nullptr) << i;
        ASSERT_EQ(*v, i);
    }
    cString upper = Key(54321);
    upper.ToUpper();
    EXPECT_EQ(*d.Find(upper), 54321);
    for (int i = 0; i < n; i += 2) {
        ASSERT_TRUE(d.Delete(Key(i)));
    }
    EXPECT_EQ(d.Count(), n / 2);
    int expected = 1;
    for (const auto& item : d) {
        ASSERT_EQ(item.mValue, expected);
        expected += 2;
    }
    EXPECT_EQ(d.Find(Key(0)), nullptr);

    // Integer keys bucket by value * 11 (256 and 1 share a bucket of 255).
    tDictionary<int, cString, 255, cAllocator> ints;
    ints.Insert(1, u"one");
    ints.Insert(256, u"two-five-six");
    ints.Insert(-5, u"minus five");
    EXPECT_EQ(ints.BucketCount(1), 2);
    EXPECT_EQ(*ints.Find(256), u"two-five-six");
    EXPECT_EQ(*ints.Find(-5), u"minus five");
    EXPECT_EQ(ints.Find(2), nullptr);
    EXPECT_TRUE(ints.Delete(1));
    EXPECT_EQ(*ints.Find(256), u"two-five-six");
}

TEST(Dictionary, ValuesAreDestroyedAndReferencesCounted) {
    const cString shared(u"shared text value");
    {
        tDictionary<cString, cString, 255, cAllocator> d;
        for (int i = 0; i < 50; ++i) {
            d.Insert(Key(i), shared);
        }
        EXPECT_EQ(BuffOf(shared)->mRefCount, 51);
        for (int i = 0; i < 25; ++i) {
            d.Delete(Key(i));
        }
        EXPECT_EQ(BuffOf(shared)->mRefCount, 26);
    }
    EXPECT_EQ(BuffOf(shared)->mRefCount, 1);
}

TEST(DictionaryDeathTest, MisuseNamesTheExpression) {
    tDictionary<cString, int, 255, cAllocator> d;
    EXPECT_EXIT(d.First(), testing::ExitedWithCode(0), "File: Dictionary.h.*Expression: mOrdFirst");
    EXPECT_EXIT(d.Last(), testing::ExitedWithCode(0), "Expression: mOrdLast");
    EXPECT_EXIT(*d.end(), testing::ExitedWithCode(0), "Expression: mItem");
    auto it = d.begin();
    EXPECT_EXIT(++it, testing::ExitedWithCode(0), "Expression: mItem");
    d.Insert(u"key", 1);
    EXPECT_EXIT(d.Insert(u"KEY", 2), testing::ExitedWithCode(0), "Expression: hi->mKey != pKey");
}

TEST(ArrayOfStrings, SurvivesGrowthAndRemovalWithCorrectCounts) {
    const cString a(u"alpha"), b(u"beta");
    {
        tArray<cString> arr(5);
        for (int i = 0; i < 100; ++i) {
            arr.Append(i % 2 == 0 ? a : b); // many reallocations move the strings bytewise
        }
        EXPECT_EQ(BuffOf(a)->mRefCount, 51);
        EXPECT_EQ(BuffOf(b)->mRefCount, 51);
        arr.Insert(0, arr[1]);
        EXPECT_EQ(arr[0], u"BETA");
        EXPECT_EQ(BuffOf(b)->mRefCount, 52);
        for (int i = 0; i < 40; ++i) {
            arr.Remove(1);
        }
        EXPECT_EQ(BuffOf(a)->mRefCount, 31);
        EXPECT_EQ(BuffOf(b)->mRefCount, 32);
        arr.RemoveFast(0);
        arr.RemoveLast();
        tArray<cString>::Move(arr, 0, arr.Count() - 1);
        tArray<cString> copy(arr);
        EXPECT_EQ(BuffOf(a)->mRefCount + BuffOf(b)->mRefCount, 2 + 2 * arr.Count());
        arr[0].Append(u"!", 1); // copy-on-write: only this element changes
        EXPECT_NE(arr[0], copy[0]);
        arr.SetCount(3);
        copy.Clear();
    }
    EXPECT_EQ(BuffOf(a)->mRefCount, 1);
    EXPECT_EQ(BuffOf(b)->mRefCount, 1);
}

TEST(Base64, StringForms) {
    std::vector<unsigned char> data(10000);
    for (std::size_t i = 0; i < data.size(); ++i) {
        data[i] = static_cast<unsigned char>(i * 7 + (i >> 8));
    }
    // Larger than one chunk: the chunks join without padding in between.
    const cString text = cBase64::EncodeS(data.data(), int(data.size()));
    EXPECT_EQ(text.Length(), 13336);
    EXPECT_EQ(text.Find(u"="), 13334); // only the final padding
    tArray<unsigned char> out;
    ASSERT_TRUE(cBase64::DecodeS(text, out));
    ASSERT_EQ(out.Count(), 10000);
    EXPECT_EQ(std::memcmp(out.Data(), data.data(), data.size()), 0);
    EXPECT_EQ(cBase64::EncodeS(data.data(), 0), u"");
    EXPECT_EQ(cBase64::EncodeS(reinterpret_cast<const unsigned char*>("Man"), 3), u"TWFu");

    EXPECT_EQ(cBase64::DecodeS(cString(u"TWE="), nullptr), 2);
    unsigned char two[2];
    EXPECT_EQ(cBase64::DecodeS(cString(u"TWE="), two), 2);
    EXPECT_EQ(two[1], 'a');
    out.SetCount(3);
    EXPECT_FALSE(cBase64::DecodeS(cString(u"TW E"), out));
    EXPECT_EQ(out.Count(), 3); // unchanged
}

TEST(TextManager, KeysStandForThemselvesUntilReplaced) {
    cTextManager* tm = cTextManager::Instance();
    EXPECT_TRUE(cTextManager::Exists());
    const cString key(u"cStream_FailedToRead");
    EXPECT_EQ(&tm->GetText(key), &key); // the key itself, not a copy
    tm->AddText(u"cStream_FailedToRead", u"Failed to read %s");
    EXPECT_EQ(tm->GetText(u"CSTREAM_FAILEDTOREAD"), u"Failed to read %s");
    tm->AddText(u"cstream_failedtoread", u"Could not read %s");
    EXPECT_TRUE(tm->GetText(key).Equals(u"Could not read %s"));
    EXPECT_EQ(tm->Count(), 1);
    cTextManager::Done();
    EXPECT_FALSE(cTextManager::Exists());
    EXPECT_EQ(&cTextManager::Instance()->GetText(key), &key); // a new, empty table
}

TEST(EnumManager, NamesValuesAndAliases) {
    cEnumManager* em = cEnumManager::Instance();
    em->AddEnumElement(u"eColor", {u"Red", u"Red colour", 1});
    em->AddEnumElement(u"ECOLOR", {u"A", u"First alias", 3});
    em->AddEnumElement(u"eColor", {u"B", u"Second alias", 3});
    ASSERT_NE(em->FindEnum(u"ecolor"), nullptr);
    EXPECT_EQ(em->FindEnum(u"eColor")->mName, u"eColor");
    EXPECT_EQ(em->FindEnum(u"eNothing"), nullptr);
    EXPECT_TRUE(em->GetEnumElementName(u"eColor", 3).Equals(u"A"));
    EXPECT_TRUE(em->GetEnumDisplayName(u"eColor", 1).Equals(u"Red colour"));
    EXPECT_EQ(em->GetEnumValue(u"eColor", u"RED", -1), 1);
    EXPECT_EQ(em->GetEnumValue(u"eColor", u"Green", -1), -1);
    EXPECT_EQ(em->FindEnumElement(u"eColor", 99), nullptr);
    EXPECT_EQ(em->GetEnumElementName(u"eColor", 99), u"");

    // Re-adding A with a new value replaces it and moves it to the end.
    em->AddEnumElement(u"eColor", {u"a", u"Moved", 7});
    EXPECT_TRUE(em->GetEnumElementName(u"eColor", 3).Equals(u"B"));
    EXPECT_EQ(em->FindEnumElement(u"eColor", u"A")->mValue, 7);
    EXPECT_TRUE(em->FindEnum(u"eColor")->mElements.Last().mKey.Equals(u"a"));

    sEnumInfo info;
    info.mName = u"eShape";
    info.mElements.Insert(u"Circle", sEnumElement{u"Circle", u"Circle", 0});
    em->AddEnum(info);
    EXPECT_EQ(em->GetEnumValue(u"ESHAPE", u"circle", -1), 0);
    cEnumManager::Done();
}

TEST(EnumManagerDeathTest, UnknownEnumerationIsTheInfoAssertion) {
    cEnumManager* em = cEnumManager::Instance();
    EXPECT_EXIT(em->FindEnumElement(u"eUnknown", 1), testing::ExitedWithCode(0),
                "File: EnumManager.cpp.*Expression: info");
    EXPECT_EXIT(em->FindEnumElement(u"eUnknown", u"x"), testing::ExitedWithCode(0),
                "Expression: info");
}
