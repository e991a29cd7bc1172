#include <Lum/CString.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <string>
#include <tuple>
#include <vector>

#include <Lum/Platform.h>

namespace {

using Lum::Platform::SetApplicationTextEncoding;

constexpr std::uint32_t kUtf8 = 0x08000100, kLatin1 = 0x0201, kUnset = 0xFFFF;

/// The text of a host string, which is released.
CString TextOf(CFStringRef string) {
    CString text = u"not set";
    text.SetFromCFStringRef(string, 0);
    CFRelease(string);
    return text;
}

TEST(PlatformStrings, ComeFromNarrowTextAndFromUnits) {
    SetApplicationTextEncoding(kLatin1);
    for (const auto create : {CFStringCreateWithLPCSTR, CFStringCreateWithLPCSTRNoCopy}) {
        EXPECT_EQ(create(nullptr, 1, kUtf8), nullptr);
        EXPECT_EQ(create("a\xC3", 1, kUtf8), nullptr);
        EXPECT_EQ(TextOf(create("\xC3\xA9", 1, kUtf8)), u"\u00E9");
        EXPECT_EQ(TextOf(create("\xC3\xA9", 1, 0xFFFFFFFF)), u"\u00C3\u00A9") << "the application's";
        EXPECT_EQ(TextOf(create("\xC3\xA9", 1, ULONG_MAX)), u"\u00C3\u00A9");
    }
    SetApplicationTextEncoding(kUnset);
    const std::u16string text(u"ab\0\0", 4);
    for (const auto create : {CFStringCreateWithLPCWSTR, CFStringCreateWithLPCWSTRNoCopy}) {
        EXPECT_EQ(create(nullptr, -1, 0), nullptr);
        for (const auto& [length, units] : {std::pair(-1L, u"ab"), {0L, u""}, {1L, u"a"}, {4L, u"ab"}}) {
            EXPECT_EQ(TextOf(create(text.c_str(), length, 0)), units) << length;
        }
    }
}

TEST(PlatformStrings, FillNoMoreThanTheirBuffer) {
    const CFStringRef string = CFStringCreateWithLPCSTR("abc\xC3\xA9", -1, kUtf8);
    using namespace std::string_literals;
    // What five units, and six bytes, of "#" hold then.
    for (const auto& [source, size, expectedUnits, expectedBytes] :
         std::vector<std::tuple<CFStringRef, long, std::u16string, std::string>>{
             {string, 3, u"abc\0#"s, "\0\0\0###"s},
             {string, 5, u"abc\u00E9\0"s, "\0\0\0\0\0#"s},
             {string, 6, u"abc\u00E9\0"s, "abc\xC3\xA9\0"s},
             {string, -1, u"\0####"s, "######"s},
             {nullptr, 3, u"\0####"s, "\0#####"s}}) {
        std::u16string units = u"#####";
        CFStringGetLPWSTR(source, units.data(), size, 0);
        EXPECT_EQ(units, expectedUnits) << size;
        std::string bytes = "######";
        CFStringGetLPSTR(source, bytes.data(), size, kUtf8);
        EXPECT_EQ(bytes, expectedBytes) << size;
    }
    CFRelease(string);
}

TEST(HfsNames, HoldAtMost255Units) {
    for (const int length : {0, 253, 254, 255, 300}) {
        const CString text('x', length);
        HFSUniStr255 name{};
        std::fill(std::begin(name.unicode), std::end(name.unicode), static_cast<unsigned short>(7));
        text.GetHFSUniStr255(&name);
        ASSERT_EQ(name.length, std::min(length, 255));
        EXPECT_TRUE(length > 254 || name.unicode[length] == 0);
        EXPECT_TRUE(length > 253 || name.unicode[length + 1] == 7);
        CString back;
        back.SetFromHFSUniStr255(&name);
        EXPECT_EQ(back, text.Left(255));
    }
    // Behind a 0 unit all are 0, and count.
    HFSUniStr255 name{};
    CString(u"a\0b", 3).GetHFSUniStr255(&name);
    EXPECT_TRUE(name.length == 3 && name.unicode[2] == 0);
    name = {0xFFFF, {'a', 0, 'b'}};
    CString text;
    text.SetFromHFSUniStr255(&name);
    text.SetFromHFSUniStr255(nullptr);
    text.GetHFSUniStr255(nullptr);
    EXPECT_TRUE(text.GetLength() == 255 && text[2] == 0 && text[1] == 0 && text[0] == 'a');
}

TEST(PascalStrings, HoldTheApplicationsEncoding) {
    // The bytes are those behind the length byte.
    for (const auto& [encoding, text, size, bytes] : std::vector<std::tuple<std::uint32_t, CString, long, std::string>>{
             {kUtf8, u"abc", 5, "abc"},
             {kUtf8, u"abc", 4, ""},             // three bytes would fit, but one is held back
             {kUtf8, u"abcdef", 5, ""},          // cut to four, which do not fit either
             {kUtf8, u"a\u00E9", 4, ""},         // cut by units, of which one is two bytes
             {kUtf8, u"ab\U0001F600", 4, "ab"},  // cut in front of the pair
             {kLatin1, u"a\u20AC", 256, ""},
             {kUtf8, u"\xD800", 256, ""},
             {kUtf8, CString('x', 254), 256, std::string(254, 'x')},
             {kUtf8, CString('x', 255), 256, ""},
             {kUtf8, CString('x', 255), 999, std::string(255, 'x')},
             {kUtf8, CString('x', 256), 999, ""},
             {kLatin1, u"a\u00E9", 4, "a\xE9"}}) {
        SetApplicationTextEncoding(encoding);
        std::vector<unsigned char> pascal(static_cast<std::size_t>(size), '#');
        text.ToMac(pascal.data(), size);
        EXPECT_EQ(std::string(pascal.begin() + 1, pascal.begin() + 1 + pascal[0]), bytes) << text;
        EXPECT_TRUE(pascal[0] != 0 || std::count(pascal.begin(), pascal.end(), 0) == std::min(size, 256L))
            << "no part is left";
        CString back = u"before";
        back.FromMac(pascal.data());
        EXPECT_EQ(back, bytes.empty() ? CString() : text.Left(back.GetLength()));
    }
    SetApplicationTextEncoding(kUtf8);
    CString text = u"before";
    text.ToMac(nullptr, 5);
    unsigned char untouched = '#';
    text.ToMac(&untouched, 0);
    EXPECT_EQ(untouched, '#');
    const unsigned char invalid[] = {2, 'a', 0xFF};
    text.FromMac(invalid);
    EXPECT_TRUE(text.IsEmpty());
    SetApplicationTextEncoding(kUnset);
}

TEST(RuntimeNames, ChangeCaseAndSearch) {
    std::u16string text = u"aZ\u00E9\u0161{`[@";
    EXPECT_EQ(CharUpper(text.data()), text.data());
    EXPECT_EQ(text, u"AZ\u00E9\u0161{`[@");
    CharLower(text.data());
    EXPECT_EQ(text, u"az\u00E9\u0161{`[@");
    const char16_t* const where = text.c_str();
    EXPECT_EQ(_mbsstr(where, u"\u0161{", 0), where + 3);
    EXPECT_EQ(_mbsstr(where, u"x", 0), nullptr);
    for (const char* const locale : {"ja_JP", "C"}) {
        Lum::Platform::SetLocale(locale);
        IntlInfo::Initialize();
        const bool isDouble = locale[0] == 'j';
        EXPECT_EQ(IntlInfo::s_doubleByte, isDouble);
        EXPECT_EQ(IntlInfo::s_leadByteTable[0x81] != 0, isDouble);
        EXPECT_EQ(_mbsstr(where, u"", 0), where);
        EXPECT_EQ(_mbsstr(u"", u"", 0) == nullptr, isDouble);
    }
}

TEST(RuntimeNames, WidenInPlaceAndWriteNumbers) {
    std::array<unsigned short, 4> units{0, 0, 0, 7};
    char* const bytes = reinterpret_cast<char*>(units.data());
    std::copy_n("a\xE9\x80", 3, bytes);
    inflateAsciiToLPTSTR(bytes, units.data(), 3);
    EXPECT_EQ(units, (std::array<unsigned short, 4>{'a', 0xFFE9, 0xFF80, 7}));
    inflateAsciiToLPTSTR("x", units.data(), -1);
    EXPECT_EQ(units[0], 'a');
    std::array<char, 24> text{"######"};
    EXPECT_STREQ(itoa(12345, text.data(), 3), "12");
    EXPECT_STREQ(itoa(7, text.data(), 0), "12");
    EXPECT_STREQ(_ltoa(LONG_MIN, text.data(), 10), std::to_string(LONG_MIN).c_str());
    EXPECT_STREQ(_ltoa(5, text.data(), 16), std::to_string(LONG_MIN).c_str());
}

TEST(RuntimeNamesDeathTest, FormatIntoAFixedBuffer) {
    struct {
        char text[8], behind[4];
    } buffer{{}, "###"};
    EXPECT_EQ(sprintf_s(buffer.text, "%s-%d", "abc", 123), 7);
    // Exactly as long as the buffer: passes, cut by one.
    EXPECT_EQ(sprintf_s(buffer.text, "%08d", 12345678), 8);
    EXPECT_STREQ(buffer.text, "1234567");
    EXPECT_STREQ(buffer.behind, "###");
    EXPECT_DEATH(sprintf_s(buffer.text, "%09d", 1), ":[0-9]+: failed assertion `result <= \\(int\\)_DstSize'\n");
}

}  // namespace
