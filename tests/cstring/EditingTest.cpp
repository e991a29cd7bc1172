#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace {

TEST(StringEditing, TextsOfTheStringItselfServeAsOperands) {
    const struct {
        const char* name;
        std::function<void(CString&)> edit;
        const char16_t* result;
    } rows[] = {
        {"append", [](CString& s) { s += s; }, u"abcabc"},
        {"append a tail", [](CString& s) { s += s.GetAsUniCharStr() + 1; }, u"abcbc"},
        {"insert across itself", [](CString& s) { s.Insert(1, s.GetAsUniCharStr()); }, u"aabcbc"},
        {"insert in front", [](CString& s) { s.Insert(-5, s); }, u"abcabc"},
        {"insert a tail behind", [](CString& s) { s.Insert(99, s.GetAsUniCharStr() + 2); }, u"abcc"},
        {"replace itself", [](CString& s) { s.Replace(s, u"xy"); }, u"xy"},
        {"replace by itself", [](CString& s) { s.Replace(u"b", s); }, u"aabcc"},
        {"assign a tail", [](CString& s) { s = s.GetAsUniCharStr() + 1; }, u"bc"},
        {"format itself", [](CString& s) { s.Format(u"%s-%d-%s", s.GetAsUniCharStr(), 7, s.GetAsUniCharStr()); },
         u"abc-7-abc"},
        {"trim by itself", [](CString& s) { s.TrimRight(s.GetAsUniCharStr() + 1); }, u"a"},
    };
    for (const auto& row : rows) {
        for (const bool isRoomy : {false, true}) {
            CString s(u"abc");
            if (!isRoomy) {
                s.GetBufferSetLength(513);
                s.ReleaseBuffer();
                s.FreeExtra();
            }
            const CString sharer = isRoomy ? s : CString();
            row.edit(s);
            EXPECT_EQ(s, row.result) << row.name;
            EXPECT_EQ(sharer, isRoomy ? u"abc" : u"") << row.name;
        }
    }
}

TEST(StringEditing, ResultsAreAsDocumented) {
    CString s(u"abcdef");
    EXPECT_EQ(s.Delete(1, 2), 6) << "the length from before";
    EXPECT_EQ(s, u"adef");
    EXPECT_EQ(s.Delete(2, 100), 4);
    EXPECT_EQ(s, u"ad");
    EXPECT_EQ(s.Delete(2, 1), 2);
    EXPECT_EQ(s.Insert(1, 'x'), 3);
    EXPECT_EQ(s.Insert(1, 0), 4);
    EXPECT_EQ(s, std::u16string_view(u"a\0xd", 4));
    EXPECT_EQ(s.Remove(0), 1);
    EXPECT_EQ(s.Replace(u"", u"x"), 0);
    EXPECT_EQ(s.Replace(nullptr, u"x"), 0);
    EXPECT_EQ(s.Replace(u"x", nullptr), 1);
    EXPECT_EQ(s, u"ad");

    const CString sharer(s);
    EXPECT_EQ(s.Replace('a', 'a'), 0);
    EXPECT_EQ(s.Replace(u"zz", u"y"), 0);
    EXPECT_EQ(s.GetAsUniCharStr(), sharer.GetAsUniCharStr()) << "nothing to replace, nothing to copy";
    s.FormatMessage(u"%d", 1);
    EXPECT_EQ(s, u"ad");
}

TEST(StringEditing, ReplacesMoreThanIsRememberedInEveryDirection) {
    for (const char16_t* const to : {u"", u"y", u"zz", u"long"}) {
        std::u16string text;
        std::u16string expected;
        for (int i = 0; i < 2000; ++i) {
            text += u"-xx";
            expected += std::u16string(u"-") + to;
        }
        CString s(text);
        CString tight(s);
        tight.FreeExtra();
        s.GetBuffer(10000);
        EXPECT_EQ(s.Replace(u"xx", to), 2000);
        EXPECT_EQ(s, expected);
        EXPECT_EQ(tight.Replace(u"xx", to), 2000);
        EXPECT_EQ(tight, expected);
    }
}

TEST(StringEditing, TrimmingAsksTwoTables) {
    const CString padded(u"\t\v\u00A0 a \u00A0\r\n");
    const struct {
        void (CString::*trim)();
        const char16_t* result;
    } rows[] = {{&CString::TrimLeft, u"\u00A0 a \u00A0\r\n"},
                {&CString::TrimRight, u"\t\v\u00A0 a"},
                {&CString::Trim, u"\u00A0 a"}};
    for (const auto& row : rows) {
        CString s(padded);
        (s.*row.trim)();
        EXPECT_EQ(s, row.result);
    }
    CString s(u"xxyaxyx");
    s.TrimLeft('x');
    EXPECT_EQ(s, u"yaxyx");
    s.TrimRight(u"xy");
    EXPECT_EQ(s, u"ya");
    s.TrimLeft(u"ay");
    EXPECT_EQ(s, u"");
}

TEST(StringEditing, CaseIsThatOfAscii) {
    CString s;
    unsigned short* const units = s.GetBufferSetLength(0x10000);
    for (int unit = 0; unit < 0x10000; ++unit) {
        units[unit] = static_cast<unsigned short>(unit);
    }
    CString upper(s);
    upper.MakeUpper();
    CString lower(s);
    lower.MakeLower();
    for (int i = 0; i < s.GetLength(); ++i) {
        const int unit = s[i];
        EXPECT_EQ(upper[i], unit >= 'a' && unit <= 'z' ? unit - 32 : unit);
        EXPECT_EQ(lower[i], unit >= 'A' && unit <= 'Z' ? unit + 32 : unit);
    }
    // In a double-byte script a lead byte shields itself and the unit behind it.
    IntlInfo::s_doubleByte = true;
    IntlInfo::s_leadByteTable[0x81] = 1;
    s = u"a\u0181ab";
    s.MakeUpper();
    EXPECT_EQ(s, u"A\u0181aB");
    IntlInfo::s_doubleByte = false;
    IntlInfo::s_leadByteTable[0x81] = 0;
    EXPECT_FALSE(IntlInfo::IsLeadByte(0x81));
}

TEST(StringCalls, CompileWithoutCastsAndMeanTheObvious) {
    CString s(u"xay");
    const unsigned short a[] = {'a', 0};
    EXPECT_EQ(s.Find('a') + s.Find(u'a') + s.Find(u"a") + s.Find(a) + s.Find(L'a') + s.Find(97), 6);
    EXPECT_EQ(s.Find(0), 3);
    EXPECT_EQ(s.Replace(a, u"b"), 1);
    EXPECT_EQ(s + 'z' + u'z' + 0 + u"q" + a, std::u16string_view(u"xbyzz\0qa", 8));
    EXPECT_EQ('<' + s, u"<xby");
    EXPECT_EQ(u"<" + s, u"<xby");
    EXPECT_EQ(a + s, u"axby");
    EXPECT_EQ(CString(0, 3).GetLength(), 3);
    EXPECT_TRUE(CString(nullptr) == nullptr);
    EXPECT_FALSE(s == nullptr);
    EXPECT_EQ(CString('\xE9', 1)[0], 0xE9) << "a character is its unsigned byte";
    EXPECT_EQ(s[0], s[0U]);
    EXPECT_EQ(s[short{1}] + s[1L] + s[std::size_t{1}] + s[char{1}], 4 * 'b');
    EXPECT_TRUE(s == u"xby" && u"xby" == s && s != u"x" && s < u"y" && s > CString(u"x") && s == "xby");
    EXPECT_TRUE(s == std::u16string(u"xby") && s == std::u16string_view(u"xby") && s != a);
    EXPECT_EQ(std::u16string(s), u"xby");
    EXPECT_EQ(std::u16string(s.begin(), s.end()), u"xby");
    EXPECT_EQ(s + std::u16string(u"!") + std::u16string_view(u"?"), u"xby!?");
    EXPECT_EQ(std::u16string(u"!") + s, u"!xby");
    EXPECT_TRUE(s.LoadString(0));
    EXPECT_EQ(s, u"0");
    EXPECT_EQ(CString(reinterpret_cast<const char*>(1004)), u"1004");
    EXPECT_EQ(CString(reinterpret_cast<const unsigned short*>(1004)), u"1004");
    EXPECT_EQ((std::unordered_set<CString>{u"a", u"a", u"b"}).size(), 2U);
    EXPECT_EQ(std::hash<CString>{}(u"ab"), std::hash<std::u16string_view>{}(u"ab"));
    s = nullptr;
    EXPECT_TRUE(s.IsEmpty());
    s = std::u16string(u"view");
    s += std::u16string_view(u"!");
    EXPECT_EQ(s, u"view!");
    s = 'q';
    s += "\xC3\xA9";
    EXPECT_EQ(s, u"q\u00E9");
    static_assert(std::is_nothrow_default_constructible_v<CString> && std::is_nothrow_swappable_v<CString>);
}

TEST(StringCalls, GenericComparisonsOrderTextsNotPointers) {
    const std::vector<CString> sorted{u"", u"a", u"ab", u"b", u"\uFFFF"};
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t j = 0; j < sorted.size(); ++j) {
            // In a buffer of its own, so that an address cannot be right by chance both ways.
            const CString a(sorted[i].GetAsUniCharStr());
            EXPECT_EQ(std::less<>{}(a, sorted[j]), i < j);
            EXPECT_EQ(std::greater_equal<>{}(a, sorted[j]), i >= j);
            EXPECT_EQ(std::ranges::less{}(sorted[j], a), j < i);
            EXPECT_EQ(std::ranges::equal_to{}(a, sorted[j]), i == j);
        }
    }
    EXPECT_TRUE((std::map<CString, int, std::less<>>{{u"a", 1}}.contains(u"a")));
}

TEST(StringCalls, PrintAsUtf8) {
    std::ostringstream out;
    out << CString(u"a\u00E9\u20AC\U0001F600") << CString(static_cast<unsigned short>(0xD83D), 1) << CString(0xDE00, 1);
    EXPECT_EQ(out.str(), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(testing::PrintToString(CString(u"\u00E9")), "\"\xC3\xA9\"");
}

}  // namespace
