#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

TEST(StringSearching, FindsUnitsAndTexts) {
    const CString s(u"abcabc");
    const CString empty;
    const struct {
        int found, expected;
        const char* why;
    } rows[] = {
        {s.Find('c'), 2, "the first"},
        {s.Find('c', 3), 5, "from a start"},
        {s.Find('c', -3), 2, "a negative start is the beginning"},
        {s.Find('a', 6), -1, "a start at the end"},
        {s.Find(0, 5), 6, "the end itself"},
        {s.Find('x'), -1, "absent"},
        {empty.Find(0), -1, "nothing is found in nothing"},
        {s.ReverseFind('a'), 3, "the last"},
        {s.ReverseFind(0), 6, "the end"},
        {empty.ReverseFind(0), 0, "the end of nothing"},
        {s.Find(u"ca"), 2, "a text"},
        {s.Find(u"abc", 1), 3, "a text from a start"},
        {s.Find(u"", 6), 6, "the empty text at the end"},
        {s.Find(u"", 7), -1, "and behind it"},
        {empty.Find(u""), 0, "the empty text in nothing"},
        {s.Find(u"abcabca"), -1, "longer than the string"},
        {s.FindOneOf(u"xcb"), 1, "one of a set"},
        {s.FindOneOf(u""), -1, "of an empty set"},
        {CString(u"a\0b", 3).Find(u"b"), 2, "behind a 0 unit"},
        {CString(u"ABC").CompareNoCase(u"abd"), -1, "case ignored"},
        {CString(u"\u00C9").CompareNoCase(u"\u00E9"), -1, "but not beyond ASCII"},
        {CString(u"ab").CompareNoCase(u"A"), 1, "longer"},
        {CString(u"a").CompareNoCase(u"AB"), -1, "shorter"},
        {CString(u"\uFFFF").Compare(u"a"), 1, "units have no sign"},
        {CString(u"a").Compare(CString(u"a\0", 2)), -1, "a 0 unit is text"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.found, row.expected) << row.why;
    }
}

TEST(StringSearching, PartsByPlaceAreClamped) {
    const CString s(u"abcdef");
    const struct {
        CString part;
        const char16_t* expected;
    } rows[] = {
        {s.Left(2), u"ab"},
        {s.Left(-1), u""},
        {s.Left(9), u"abcdef"},
        {s.Right(2), u"ef"},
        {s.Right(-1), u""},
        {s.Mid(2, 100), u"cdef"},
        {s.Mid(10, 2), u""},
        {s.Mid(-3), u"abcdef"},
        {s.Mid(-3, 2), u"ab"},
        {s.Mid(2), u"cdef"},
        {s.Mid(INT_MIN), u"abcdef"},
        {s.Mid(INT_MAX, INT_MAX), u""},
        {s.Mid(1, INT_MIN), u""},
        {s.Mid(9), u""},
        {s.SpanIncluding(u"cab"), u"abc"},
        {s.SpanExcluding(u"d"), u"abc"},
        {s.SpanExcluding(u""), u"abcdef"},
        {s.RightMost(2), u"cdef"},
        {s.RightMost(0), u"abcdef"},
        {s.RightMost(-2), u"abcdef"},
        {s.RightMost(INT_MAX), u""},
        {s.RightMost(INT_MIN), u"abcdef"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.part, row.expected);
    }
    EXPECT_EQ(s.Right(6).GetAsUniCharStr(), s.GetAsUniCharStr()) << "the whole text shares the buffer";
}

TEST(StringSearching, TokensEndWithMinusOne) {
    const CString s(u"  a,b");
    int position = 0;
    EXPECT_EQ(s.Tokenize(u" ,", position), u"a");
    EXPECT_EQ(position, 4);
    EXPECT_EQ(s.Tokenize(u" ,", position), u"b");
    EXPECT_EQ(position, 6);
    EXPECT_EQ(s.Tokenize(u" ,", position), u"");
    EXPECT_EQ(position, -1);
    position = 3;
    EXPECT_EQ(s.Tokenize(nullptr, position), s);
    EXPECT_EQ(position, 3);
    position = 0;
    EXPECT_EQ(CString(u",,").Tokenize(u",", position), u"");
    EXPECT_EQ(position, -1);
}

TEST(StringParts, AreNumberedFromZero) {
    const CString s(u"a:b:c:d");
    EXPECT_EQ(s.GetPartCount(':'), 4);
    EXPECT_EQ(CString().GetPartCount(':'), 1);
    const struct {
        CString part;
        const char16_t* expected;
        const char* why;
    } rows[] = {
        {s.GetPart(':', 0), u"a", "the first"},
        {s.GetPart(':', 3), u"d", "the last"},
        {s.GetPart(':', 4), u"", "none of that number"},
        {s.GetPart(':', -1), u"", "nor of this"},
        {s.GetLastPart(':'), u"d", "the last"},
        {CString(u"a:").GetLastPart(':'), u"", "behind a delimiter at the end"},
        {s.GetLastPart('x'), u"a:b:c:d", "no delimiter"},
        {s.GetPartRange(':', 1, 3), u"b:c", "a range"},
        {s.GetPartRange(':', 2, 2), u"c", "an empty range is one part, on purpose"},
        {s.GetPartRange(':', 3, 1), u"", "backwards"},
        {s.GetPartRange(':', 1, -1), u"b:c:d", "to the end"},
        {s.GetPartRange(':', 2, 6), u"c:d::", "parts that are not there are empty"},
        {s.GetPartRange(':', -2, 1), u"::a", "on this side too"},
        {s.GetPartRange(':', 5, 8), u"::", "nothing but such"},
        {CString(u"a::b::::c").GetPart(CString(u"::"), 2), u"", "a delimiter of two units"},
        {CString(u"a:::b").GetLastPart(CString(u"::")), u":b", "matched from the left"},
        {CString(u"a::b::c").GetPartRange(u"::", 1, 3), u"b::c", "ranges of such"},
        {s.GetPart(CString(), 0), u"a:b:c:d", "an empty delimiter is found nowhere"},
        {CString(u"a\u00E9b").GetPart('\xE9', 0), u"a\u00E9b", "nor is one above 0x7F, kept on purpose"},
        {CString(u"a\uFFE9b").GetLastPart('\xE9'), u"a\uFFE9b", "in no form"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.part, row.expected) << row.why;
    }
    EXPECT_EQ(CString(u"a::b").GetPartCount(u"::"), 2);
    EXPECT_EQ(s.GetPart('x', 0).GetAsUniCharStr(), s.GetAsUniCharStr()) << "the whole text shares the buffer";
}

}  // namespace
