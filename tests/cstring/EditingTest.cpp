#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <unordered_set>

namespace {

TEST(StringEditing, TextsOfTheStringItselfServeAsOperands) {
    CString s(u"abc");
    EXPECT_EQ(s.Replace(u"b", s), 1);
    EXPECT_EQ(s, u"aabcc");
    EXPECT_EQ(s.Replace(s, u"xy"), 1);
    s.Format(u"%s-%d-%s", s.GetAsUniCharStr(), 7, s.GetAsUniCharStr() + 1);
    EXPECT_EQ(s, u"xy-7-y");
    s.TrimRight(s.GetAsUniCharStr() + 2);
    EXPECT_EQ(s, u"x");
    s.TrimLeft(s);
    EXPECT_EQ(s, u"");
}

TEST(StringEditing, AnEditCopiesWhatIsSharedAndKeepsWhatIsNot) {
    static constexpr HFSUniStr255 kName{1, {'x'}};
    const std::tuple<const char*, void (*)(CString&), const char16_t*> rows[] = {
        {"SetAt", [](CString& s) { s.SetAt(1, 'x'); }, u" xAc "},
        {"Insert a unit", [](CString& s) { s.Insert(1, 'x'); }, u" xbAc "},
        {"Remove", [](CString& s) { s.Remove('A'); }, u" bc "},
        {"Replace of a unit", [](CString& s) { s.Replace('A', 'x'); }, u" bxc "},
        {"MakeReverse", [](CString& s) { s.MakeReverse(); }, u" cAb "},
        {"MakeLower", [](CString& s) { s.MakeLower(); }, u" bac "},
        {"MakeUpper", [](CString& s) { s.MakeUpper(); }, u" BAC "},
        {"TrimLeft", [](CString& s) { s.TrimLeft(); }, u"bAc "},
        {"TrimRight", [](CString& s) { s.TrimRight(); }, u" bAc"},
        {"TrimLeft of a unit", [](CString& s) { s.TrimLeft(' '); }, u"bAc "},
        {"TrimRight of a unit", [](CString& s) { s.TrimRight(' '); }, u" bAc"},
        {"TrimLeft of a set", [](CString& s) { s.TrimLeft(u"b "); }, u"Ac "},
        {"TrimRight of a set", [](CString& s) { s.TrimRight(u"c "); }, u" bA"},
        {"+= a text", [](CString& s) { s += u"x"; }, u" bAc x"},
        {"= a unit", [](CString& s) { s = 'x'; }, u"x"},
        {"Format", [](CString& s) { s.Format(u"%d", 1); }, u"1"},
        {"SetFromHFSUniStr255", [](CString& s) { s.SetFromHFSUniStr255(&kName); }, u"x"}};
    for (const auto& [name, edit, result] : rows) {
        for (const bool isShared : {false, true}) {
            // The blocks that come next have held longer texts.
            for (std::array<CString, 3> longer; CString & text : longer) {
                text = CString('x', 60);
                text.LockBuffer();
            }
            CString s(u" bAc ");
            const CString sharer = isShared ? s : CString();
            const unsigned short* const units = isShared ? s.GetAsUniCharStr() : s.LockBuffer();
            s.ReleaseCFStringRef(s.GetCFStringRef(0));
            edit(s);
            const auto& header = reinterpret_cast<const CStringData*>(s.GetAsUniCharStr())[-1];
            EXPECT_EQ(s, result) << name;
            EXPECT_EQ(s.GetAsUniCharStr()[s.GetLength()], 0) << name;
            EXPECT_TRUE(header.cachedCFString == nullptr && header.refCount == (isShared ? 1 : -1)) << name;
            EXPECT_EQ(s.GetAsUniCharStr() != units, isShared) << name;
            if (isShared) {
                const auto& old = reinterpret_cast<const CStringData*>(units)[-1];
                EXPECT_EQ(sharer, u" bAc ") << name;
                EXPECT_TRUE(old.cachedCFString != nullptr && old.refCount == 3) << name;
            }
        }
    }
}

TEST(StringEditing, ResultsAreAsDocumented) {
    CString s(u"abcdef");
    CString shared('x', 100);
    const CString first = shared;
    EXPECT_EQ(shared.Replace(u"xx", u"y"), 50);
    EXPECT_EQ(reinterpret_cast<const CStringData*>(shared.GetAsUniCharStr())[-1].allocLength, 128) << "as of a copy";
    EXPECT_EQ(shared.Replace('y', 'z'), 50);
    EXPECT_EQ(s.Delete(1, 2), 6) << "the length from before";
    EXPECT_EQ(s.Delete(2, 100), 4);
    EXPECT_EQ(s.Insert(1, 'x'), 3);
    EXPECT_EQ(s.Insert(1, 0), 4);
    EXPECT_EQ(s, std::u16string_view(u"a\0xd", 4));
    EXPECT_EQ(s.Remove(0), 1);
    EXPECT_EQ(s.Replace(u"x", nullptr), 1);
    EXPECT_EQ(s, u"ad");
    const CString sharer(s);
    EXPECT_EQ(s.Replace('a', 'a') + s.Replace(u"zz", u"y") + s.Replace(u"", u"x") + s.Replace(nullptr, u"x"), 0);
    EXPECT_EQ(s.GetAsUniCharStr(), sharer.GetAsUniCharStr()) << "nothing to replace, nothing to copy";
    s.FormatMessage(u"%d", 1);
    EXPECT_EQ(s, u"ad");
    s = u"\t\v\u00A0 a \u00A0\r\n";
    s.Trim();
    EXPECT_EQ(s, u"\u00A0 a") << "the no-break space goes at the end only";
}

TEST(StringEditing, ReplacesMoreThanIsRememberedInEveryDirection) {
    for (const std::u16string to : {u"", u"y", u"zz", u"long"}) {
        std::u16string text, expected;
        for (int i = 0; i < 2000; ++i) {
            text += u"-xx";
            expected += u"-" + to;
        }
        for (const int capacity : {0, 10'000}) {
            CString s(text);
            s.GetBuffer(capacity);
            EXPECT_EQ(s.Replace(u"xx", to.c_str()), 2000);
            EXPECT_EQ(s, expected);
        }
    }
}

TEST(StringEditing, CaseIsThatOfAscii) {
    for (int unit = 1; unit < 0x10000; ++unit) {
        CString s(unit, 20);
        s.MakeUpper();
        EXPECT_EQ(s, CString(unit >= 'a' && unit <= 'z' ? unit - 32 : unit, 20));
        s = CString(unit, 20);
        s.MakeLower();
        EXPECT_EQ(s, CString(unit >= 'A' && unit <= 'Z' ? unit + 32 : unit, 20));
    }
    // In a double-byte script a lead byte shields itself and the unit behind it.
    IntlInfo::s_doubleByte = true;
    IntlInfo::s_leadByteTable[0x81] = 1;
    CString s(u"a\u0181ab");
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
    EXPECT_EQ(s.Replace(a, u"b"), 1);
    EXPECT_EQ(u"<" + ('<' + s) + 'z' + u'z' + 0 + u"q" + a, std::u16string_view(u"<<xbyzz\0qa", 10));
    EXPECT_EQ(std::u16string(u"!") + (a + s) + std::u16string(u"!") + std::u16string_view(u"?"), u"!axby!?");
    EXPECT_EQ(CString(0, 3).GetLength(), 3);
    EXPECT_TRUE(CString(nullptr) == nullptr && !(s == nullptr) && (CString(s) = nullptr).IsEmpty());
    EXPECT_EQ(CString('\xE9', 1)[0], 0xE9) << "a character is its unsigned byte";
    EXPECT_EQ(s[1U] + s[short{1}] + s[1L] + s[std::size_t{1}] + s[char{1}], 5 * 'b');
    EXPECT_TRUE(s == u"xby" && u"xby" == s && s != u"x" && s < u"y" && s > CString(u"x") && s == "xby");
    EXPECT_TRUE(s == std::u16string(u"xby") && s == std::u16string_view(u"xby") && s != a);
    EXPECT_EQ(std::u16string(s), std::u16string(s.begin(), s.end()));
    EXPECT_TRUE(s.LoadString(0) && s == u"0");
    EXPECT_EQ((std::unordered_set<CString>{u"a", u"a", u"b"}).size(), 2U);
    s = std::u16string(u"view");
    s += std::u16string_view(u"!");
    s += "\xC3\xA9";
    EXPECT_EQ(s, u"view!\u00E9");
    // What is there for old sources and does nothing, or little.
    s.FormatMessage(a, 1);
    s.FormatMessage(128U, 1);
    s.TrimLeft();
    CheckStrResTableForDups(nullptr, 1);
    EXPECT_EQ(s, u"view!\u00E9");
    EXPECT_TRUE(AfxIsValidString(a, 1) && !AfxIsValidString(static_cast<const unsigned short*>(nullptr), 1));
    EXPECT_EQ(CString(static_cast<const unsigned short*>(nullptr), 3).GetLength(), 3);
    EXPECT_EQ(CString(reinterpret_cast<const char*>(4242), 5), u"4242") << "the number of a text";
    static_assert(std::is_nothrow_default_constructible_v<CString> && std::is_nothrow_swappable_v<CString>);
}

TEST(StringCalls, GenericComparisonsOrderTextsNotPointers) {
    const CString a(u"a"), same(u"a"), b(u"\uFFFF");
    // In both orders, so that addresses cannot be right by chance.
    EXPECT_TRUE(std::less<>{}(a, b) && !std::less<>{}(b, a) && !std::less<>{}(a, same) && !std::less<>{}(same, a));
    EXPECT_TRUE(std::greater_equal<>{}(b, a) && !std::greater_equal<>{}(a, b) && std::ranges::less{}(a, b));
    EXPECT_TRUE(!std::ranges::less{}(b, a) && std::ranges::equal_to{}(a, same) && !std::ranges::equal_to{}(a, b));
    EXPECT_TRUE((std::map<CString, int, std::less<>>{{u"a", 1}}.contains(u"a")));
}

TEST(StringCalls, PrintAsUtf8) {
    std::ostringstream out;
    out << CString(u"a\u00E9\u20AC\U0001F600") << CString(0xD83D, 1) << CString(0xDE00, 1);
    EXPECT_EQ(out.str(), "aé€😀\uFFFD\uFFFD");
    EXPECT_EQ(testing::PrintToString(CString(u"é")), "\"é\"");
}

TEST(StringSearching, FindsUnitsAndTexts) {
    const CString s(u"abcabc");
    EXPECT_EQ(s.Find(0, 5), 6) << "the end itself";
    EXPECT_EQ(CString().Find(0), -1) << "nothing is found in nothing";
    EXPECT_EQ(s.ReverseFind(0), 6) << "the end";
    EXPECT_EQ(CString().ReverseFind(0), 0) << "the end of nothing";
    EXPECT_EQ(s.Find(u"", 6), 6) << "the empty text at the end";
    EXPECT_EQ(s.Find(u"", 7), -1) << "and behind it";
    EXPECT_EQ(s.FindOneOf(u"xcb"), 1) << "one of a set";
    EXPECT_EQ(s.SpanIncluding(u"cab") + s.SpanExcluding(u"c"), u"abcabcab") << "those before the first other one";
    EXPECT_EQ(CString(u"a\0b", 3).Find(u"b"), 2) << "behind a 0 unit";
    EXPECT_EQ(CString(u"aBc").CompareNoCase(u"AbC"), 0) << "case ignored";
    EXPECT_EQ(CString(u"ABC").CompareNoCase(u"abd"), -1);
    EXPECT_EQ(CString(u"\u00C9").CompareNoCase(u"\u00E9"), -1) << "but not beyond ASCII";
    EXPECT_EQ(CString(u"a").CompareNoCase(u"AB"), -1) << "shorter";
    EXPECT_EQ(CString(u"ab").CompareNoCase(u"A"), 1) << "longer";
    EXPECT_EQ(CString(u"\uFFFF").Compare(u"a"), 1) << "units have no sign";
    EXPECT_EQ(CString(u"a").Compare(CString(u"a\0", 2)), -1) << "a 0 unit is text";
}

TEST(StringSearching, TokensEndWithMinusOne) {
    const CString s(u"  a,b");
    int position = 0;
    EXPECT_EQ(s.Tokenize(u" ,", position), u"a");
    EXPECT_EQ(s.Tokenize(u" ,", position), u"b");
    position = 3;
    EXPECT_EQ(s.Tokenize(nullptr, position), s);
    EXPECT_EQ(CString(u",,,,").Tokenize(u",", position), u"");
    EXPECT_EQ(position, -1);
}

TEST(StringParts, AreNumberedFromZero) {
    const CString s(u"a:b:c:d");
    EXPECT_EQ(s.GetPartCount(':'), 4);
    EXPECT_EQ(CString().GetPartCount(':'), 1);
    EXPECT_EQ(CString(u"a:").GetLastPart(':'), u"") << "behind a delimiter at the end";
    EXPECT_EQ(s.GetLastPart('x'), u"a:b:c:d") << "no delimiter";
    EXPECT_EQ(s.GetPartRange(':', 2, 2), u"c") << "an empty range is one part";
    EXPECT_EQ(s.GetPartRange(':', 3, 1), u"") << "backwards";
    EXPECT_EQ(s.GetPartRange(':', 1, -1), u"b:c:d") << "to the end";
    EXPECT_EQ(s.GetPartRange(':', 2, 6), u"c:d::") << "parts that are not there are empty";
    EXPECT_EQ(s.GetPartRange(':', -2, 1), u"::a") << "on this side too";
    EXPECT_EQ(s.GetPartRange(':', 5, 8) + s.GetPartRange(':', -4, -2), u":::") << "nothing but such";
    EXPECT_EQ(s.GetPartRange(':', 0, -1) + s.GetPartRange(':', 0, 4), s + s) << "all of them";
    EXPECT_EQ(CString(u"a:").GetPartRange(':', 1, 2), u"") << "an empty one";
    EXPECT_EQ(CString(u"a::b::::c").GetPart(CString(u"::"), 2), u"") << "a delimiter of two units";
    EXPECT_EQ(CString(u"a:::b").GetLastPart(CString(u"::")), u":b") << "matched from the left";
    EXPECT_EQ(CString(u"a::b::c").GetPartRange(u"::", 1, 3), u"b::c") << "ranges of such";
    EXPECT_EQ(s.GetPart(CString(), 0), u"a:b:c:d") << "an empty delimiter is found nowhere";
    EXPECT_EQ(CString(u"a\u00E9b").GetPart('\xE9', 0), u"a\u00E9b") << "nor is one above 0x7F";
    EXPECT_EQ(CString(u"a\uFFE9b").GetLastPart('\xE9'), u"a\uFFE9b") << "in no form";
    EXPECT_EQ(CString(u"a::b").GetPartCount(u"::"), 2);
    EXPECT_EQ(s.GetPart('x', 0).GetAsUniCharStr(), s.GetAsUniCharStr()) << "the whole text shares the buffer";
}

}  // namespace
