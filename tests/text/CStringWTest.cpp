#include <gtest/gtest.h>

#include <corvane/text/CStringList.h>
#include <corvane/text/CStringW.h>

#include "support/Text.h"

namespace {

template <typename Text>
concept IsTruth = requires(Text text) {
    text ? 1 : 0;
};
template <typename Text>
concept GivesTruth = requires(Text text) {
    static_cast<void (*)(bool)>(nullptr)(text);
};
#ifdef __clang__  // GCC 12 takes the question itself for an error.
template <typename Text>
concept CanBeDeleted = requires(Text text) {
    delete text;
};
#endif
template <typename Text>
concept TakesNumbers = requires(Text text) {
    text + 1;
}
|| requires(Text text) {
    1 + text;
}
|| requires(Text text) {
    text - 1;
}
|| requires(Text text) {
    text - text;
};

// What a pointer could do besides. A lone unit is text.
static_assert(!IsTruth<CStringW>);
static_assert(!GivesTruth<CStringW>);
static_assert(!TakesNumbers<CStringW>);
static_assert(requires(CStringW text) { text + u'1' + text + u"2"; });

TEST(CStringW, TakesPositionsAndCountsOutOfRangeQuietly) {
    const CStringW text(u"hello");
    EXPECT_EQ(text.Left(-3), u"");
    EXPECT_EQ(text.Left(99), u"hello");
    EXPECT_EQ(text.Right(2), u"lo");
    EXPECT_EQ(text.Right(99), u"hello");
    EXPECT_EQ(text.Mid(-1), u"hello");
    EXPECT_EQ(text.Mid(9, 2), u"");
    EXPECT_EQ(text.Mid(1, 3), u"ell");
    EXPECT_EQ(text.GetAt(5), u'\0');
    EXPECT_EQ(text.GetAt(-1), u'\0');
    EXPECT_EQ(text.Find(u"l", 99), -1);
    EXPECT_EQ(text.Find(u'l', -5), 2);

    CStringW changed(text);
    changed.SetAt(17, u'x');
    changed.Truncate(70);
    EXPECT_EQ(changed, text);
    EXPECT_EQ(changed.Delete(3, 99), 3);
    EXPECT_EQ(changed.Insert(99, u"p"), 4);
    EXPECT_EQ(changed, u"help");
}

TEST(CStringW, SearchesFromBothEnds) {
    const CStringW path(u"C:\\Rules\\wall.dll");
    EXPECT_EQ(path.ReverseFind(u'\\'), 8);
    EXPECT_EQ(path.Find(u"\\"), 2);
    EXPECT_EQ(path.FindOneOf(u".\\"), 2);
    EXPECT_EQ(path.Mid(path.ReverseFind(u'\\') + 1), u"wall.dll");
    EXPECT_EQ(path.SpanExcluding(u":"), u"C");
    EXPECT_EQ(path.SpanIncluding(u"C:"), u"C:");
}

TEST(CStringW, EditsInPlace) {
    CStringW text(u"A / B (C)");
    EXPECT_EQ(text.Remove(u' '), 4 - 1);
    EXPECT_EQ(text, u"A/B(C)");
    EXPECT_EQ(text.Replace(u"/", u"//"), 1);
    EXPECT_EQ(text.Replace(u"", u"x"), 0);
    EXPECT_EQ(text.Replace(u'(', u'['), 1);
    EXPECT_EQ(text.MakeReverse(), u")C[B//A");
    text = u" \t\u00A0x y\u3000\n";
    EXPECT_EQ(text.Trim(), u"x y");
    EXPECT_EQ(text.TrimRight(u"y "), u"x");
    text = text.GetString();
    EXPECT_EQ(text, u"x");
}

TEST(CStringW, FoldsCaseByUnicodeWhateverTheLocale) {
    EXPECT_EQ(CStringW(u"\u00C4RGER \u0416").MakeLower(), u"\u00E4rger \u0436");
    EXPECT_EQ(CStringW(u"stra\u00DFe").MakeUpper(), u"STRA\u00DFE");
    EXPECT_EQ(CStringW(u"\u00C4").CompareNoCase(u"\u00E4"), 0);
    EXPECT_LT(CStringW(u"a").CompareNoCase(u"B"), 0);
    EXPECT_GT(CStringW(u"a").Compare(u"B"), 0);
    EXPECT_LT(CStringW(u"ab").CompareNoCase(u"ABC"), 0);
}

TEST(CStringW, ComparesWithWhateverHoldsText) {
    const CStringW b(u"b");
    const std::u16string_view view = u"b";
    const char16_t* null = nullptr;
    EXPECT_TRUE(b < u"c");
    EXPECT_TRUE(u"a" < b);
    EXPECT_TRUE(b <= view);
    EXPECT_TRUE(view >= b);
    EXPECT_TRUE(b == std::u16string(view));
    EXPECT_TRUE(b > null);
    EXPECT_TRUE(b != nullptr);
    EXPECT_TRUE(CStringW() == nullptr);
    EXPECT_TRUE(CStringW() == null);
}

TEST(CStringW, CollatesWithEveryUnitCounted) {
    const CStringW text(u"wall");
    EXPECT_EQ(text.Collate(u"wall"), 0);
    EXPECT_LT(text.Collate(u"walls"), 0);
    EXPECT_EQ(text.CollateNoCase(u"WALL"), 0);
    EXPECT_GT(text.CollateNoCase(u"WAL"), 0);
    // The system's own comparison ends at a zero.
    EXPECT_LT(text.Collate({u"wall\0", 5}), 0);
}

TEST(CStringW, TakesUnitsAndForeignWriting) {
    CStringW text;
    text = u'b';
    text += std::u16string(u"c");
    EXPECT_EQ(text.Insert(0, u'a'), 3);
    EXPECT_EQ(u'.' + text + u'.', u".abc.");
    EXPECT_EQ((u'.' + text).Trim(u'.'), u"abc");
    char16_t* buffer = text.GetBuffer(10);
    buffer[3] = u'd';
    text.ReleaseBuffer();
    EXPECT_EQ(text, u"abcd");
    text.GetBuffer()[0] = u'x';
    text.ReleaseBuffer(2);
    EXPECT_EQ(text, u"xb");
    text = {};
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(CStringW(u"\u00E4\xD800").ToNarrow(), "\xC3\xA4\xEF\xBF\xBD");
}

TEST(CStringW, SplitsIntoTokens) {
    const CStringW text(u",,a,bc,");
    int position = 0;
    EXPECT_EQ(text.Tokenize(u",", position), u"a");
    EXPECT_EQ(text.Tokenize(u",", position), u"bc");
    EXPECT_EQ(text.Tokenize(u",", position), u"");
    EXPECT_EQ(position, -1);
    EXPECT_EQ(text.Tokenize(u",", position), u"");
}

TEST(CStringW, IsEmptyForNullPointersAndKeepsNulUnits) {
    EXPECT_TRUE(CStringW(static_cast<const char16_t*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CStringW(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CStringW(u"abc", -1).IsEmpty());
    EXPECT_EQ(CStringW(std::u16string_view(u"a\0b", 3)).GetLength(), 3);
    EXPECT_NE(CStringW(std::u16string_view(u"a\0b", 3)), u"a");
    EXPECT_EQ(CStringW(u'x', 3), u"xxx");
}

TEST(CStringList, KeepsOrderAndSurvivesItsOwnAppend) {
    CStringList list;
    list.AddTail(u"b");
    list.AddHead(u"a");
    list.AddTail(list);
    EXPECT_EQ(list.GetCount(), 4U);
    EXPECT_EQ(list.RemoveTail(), u"b");
    EXPECT_EQ(list.RemoveHead(), u"a");
    EXPECT_EQ(*list.Find(u"a"), u"a");
    list.RemoveAll();
    EXPECT_EQ(list.RemoveHead(), u"");
    EXPECT_EQ(list.RemoveTail(), u"");
}

}  // namespace
