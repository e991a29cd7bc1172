#include <Lum/CString.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>
#include <string>
#include <vector>

#include <Lum/Platform.h>

namespace {

constexpr unsigned long kUtf8 = 0x08000100;
constexpr unsigned long kLatin1 = 0x0201;
constexpr unsigned long kApplications = 0xFFFFFFFF;

struct GiveBack {
    void operator()(CFStringRef string) const { CFRelease(string); }
};
using Owned = std::unique_ptr<const __CFString, GiveBack>;

std::u16string TextOf(CFStringRef string) {
    std::array<char16_t, 400> units{};
    units.fill(u'#');
    CFStringGetLPWSTR(string, units.data(), 399, 0);
    return units.data();
}

/// Sets the application's encoding until it goes.
struct WithEncoding {
    explicit WithEncoding(unsigned long encoding) {
        Lum::Platform::SetApplicationTextEncoding(static_cast<std::uint32_t>(encoding));
    }
    ~WithEncoding() { Lum::Platform::SetApplicationTextEncoding(0xFFFF); }
};

TEST(PlatformStrings, ComeFromNarrowText) {
    struct Row {
        const char* text;
        unsigned long encoding;
        const char16_t* units;  // null for no string
    };
    const WithEncoding latin1(kLatin1);
    for (const Row& row : std::vector<Row>{{nullptr, kUtf8, nullptr},
                                           {"", kUtf8, u""},
                                           {"\xC3\xA9", kUtf8, u"\u00E9"},
                                           {"\xC3\xA9", kApplications, u"\u00C3\u00A9"},
                                           {"\xC3\xA9", ULONG_MAX, u"\u00C3\u00A9"},
                                           {"a\xC3", kUtf8, nullptr},
                                           {"a", 0xFFFF, nullptr}}) {
        for (const auto create : {CFStringCreateWithLPCSTR, CFStringCreateWithLPCSTRNoCopy}) {
            const Owned string(create(row.text, 1, row.encoding));
            ASSERT_EQ(string != nullptr, row.units != nullptr) << row.text;
            EXPECT_TRUE(!string || TextOf(string.get()) == row.units) << row.text;
        }
    }
}

TEST(PlatformStrings, ComeFromUnits) {
    const std::u16string text = u"ab\0c";
    EXPECT_EQ(CFStringCreateWithLPCWSTR(nullptr, 3, 0), nullptr);
    EXPECT_EQ(CFStringCreateWithLPCWSTRNoCopy(nullptr, -1, 0), nullptr);
    for (const auto create : {CFStringCreateWithLPCWSTR, CFStringCreateWithLPCWSTRNoCopy}) {
        for (const long length : {-1L, 0L, 1L, 2L}) {
            const Owned string(create(text.c_str(), length, 0));
            EXPECT_EQ(TextOf(string.get()), text.substr(0, length < 0 ? 2 : static_cast<std::size_t>(length)));
        }
    }
    const unsigned short zeros[] = {'a', 'b', 0, 0};
    const Owned padded(CFStringCreateWithLPCWSTR(zeros, 4, 0));
    CString string;
    EXPECT_TRUE(string.SetFromCFStringRef(padded.get(), 0));
    EXPECT_EQ(string, u"ab");
}

TEST(PlatformStrings, FillNoMoreThanTheirBuffer) {
    const Owned string(CFStringCreateWithLPCSTR("abc\xC3\xA9", -1, kUtf8));
    struct Row {
        CFStringRef string;
        long max;
        std::u16string units;  // of five "#", those that are left
    };
    for (const Row& row : std::vector<Row>{{string.get(), 3, {u"abc\0#", 5}},
                                           {string.get(), 9, {u"abc\u00E9\0", 5}},
                                           {string.get(), -1, {u"\0####", 5}},
                                           {nullptr, 3, {u"\0####", 5}}}) {
        std::u16string buffer = u"#####";
        CFStringGetLPWSTR(row.string, buffer.data(), row.max, 0);
        EXPECT_EQ(buffer, row.units) << row.max;
    }
    for (const auto& [source, size, bytes] : std::vector<std::tuple<CFStringRef, long, std::string>>{
             {string.get(), 6, "abc\xC3\xA9"}, {string.get(), 5, ""}, {string.get(), 0, "######"}, {nullptr, 6, ""}}) {
        std::array<char, 8> buffer{"######"};
        CFStringGetLPSTR(source, buffer.data(), size, kUtf8);
        EXPECT_EQ(std::string(buffer.data()), bytes) << size;
    }
}

TEST(HfsNames, HoldAtMost255Units) {
    for (const int length : {0, 1, 254, 255, 300}) {
        const CString text('x', length);
        HFSUniStr255 name{};
        std::fill(std::begin(name.unicode), std::end(name.unicode), static_cast<unsigned short>(7));
        text.GetHFSUniStr255(&name);
        ASSERT_EQ(name.length, std::min(length, 255));
        EXPECT_EQ(std::count(name.unicode, name.unicode + name.length, 'x'), name.length);
        EXPECT_TRUE(length > 254 || name.unicode[length] == 0);
        EXPECT_TRUE(length > 253 || name.unicode[length + 1] == 7);
        CString back = u"before";
        back.SetFromHFSUniStr255(&name);
        EXPECT_EQ(back, text.Left(255));
    }
    // Behind a 0 unit all are 0, and count.
    const unsigned short units[] = {'a', 0, 'b'};
    HFSUniStr255 name{};
    CString(units, 3).GetHFSUniStr255(&name);
    EXPECT_EQ(name.length, 3);
    EXPECT_EQ(name.unicode[2], 0);
    name = {0xFFFF, {'a', 0, 'b'}};
    CString text;
    text.SetFromHFSUniStr255(&name);
    EXPECT_EQ(text.GetLength(), 255);
    EXPECT_EQ(text.GetAt(2), 0);
    text.SetFromHFSUniStr255(nullptr);
    text.GetHFSUniStr255(nullptr);
    EXPECT_EQ(text.GetLength(), 255);
}

TEST(PascalStrings, HoldTheApplicationsEncoding) {
    struct Row {
        unsigned long encoding;
        std::u16string text;
        long size;
        std::string bytes;  // behind the length byte
    };
    const std::u16string grin = u"\U0001F600";
    for (const Row& row : std::vector<Row>{{kUtf8, u"abc", 5, "abc"},
                                           {kUtf8, u"abc", 4, ""},      // three bytes would fit, but one is held back
                                           {kUtf8, u"abcdef", 5, ""},   // cut to four, which do not fit either
                                           {kUtf8, u"a\u00E9", 4, ""},  // cut by units, of which one is two bytes
                                           {kUtf8, u"ab" + grin, 4, "ab"},  // cut in front of the pair
                                           {kUtf8, u"abc" + grin, 9, "abc\xF0\x9F\x98\x80"},
                                           {kLatin1, u"a\u00E9", 4, "a\xE9"},
                                           {kLatin1, u"a\u20AC", 256, ""},
                                           {kUtf8, u"a", 1, ""},
                                           {kUtf8, u"\xD800", 256, ""},
                                           {kUtf8, std::u16string(254, u'x'), 256, std::string(254, 'x')},
                                           {kUtf8, std::u16string(255, u'x'), 256, ""},
                                           {kUtf8, std::u16string(255, u'x'), 999, std::string(255, 'x')},
                                           {kUtf8, std::u16string(256, u'x'), 999, ""}}) {
        const WithEncoding encoding(row.encoding);
        std::vector<unsigned char> pascal(static_cast<std::size_t>(row.size), '#');
        const CString text(row.text);
        text.ToMac(pascal.data(), row.size);
        EXPECT_EQ(std::string(pascal.begin() + 1, pascal.begin() + 1 + pascal[0]), row.bytes)
            << text << ' ' << row.size;
        CString back = u"before";
        back.FromMac(pascal.data());
        EXPECT_EQ(back, text.Left(back.GetLength()));
        EXPECT_EQ(back.IsEmpty(), row.bytes.empty());
    }
    const WithEncoding utf8(kUtf8);
    CString text = u"before";
    text.ToMac(nullptr, 5);
    unsigned char untouched = '#';
    text.ToMac(&untouched, 0);
    EXPECT_EQ(untouched, '#');
    const unsigned char invalid[] = {2, 'a', 0xFF};
    text.FromMac(invalid);
    EXPECT_TRUE(text.IsEmpty());
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
    EXPECT_EQ(_mbsstr(where, u"", 0), where);
    const char16_t* const empty = u"";
    EXPECT_EQ(_mbsstr(empty, u"", 0), empty);
    IntlInfo::s_doubleByte = true;
    EXPECT_EQ(_mbsstr(empty, u"", 0), nullptr);
    EXPECT_EQ(_mbsstr(where, u"", 0), where);
    IntlInfo::s_doubleByte = false;
}

TEST(RuntimeNames, WidenInPlace) {
    std::array<unsigned short, 4> units{0, 0, 0, 7};
    char* const bytes = reinterpret_cast<char*>(units.data());
    std::copy_n("a\xE9\x80", 3, bytes);
    inflateAsciiToLPTSTR(bytes, units.data(), 3);
    EXPECT_EQ(units, (std::array<unsigned short, 4>{'a', 0xFFE9, 0xFF80, 7}));
    inflateAsciiToLPTSTR("x", units.data(), -1);
    EXPECT_EQ(units[0], 'a');
}

TEST(RuntimeNames, WriteNumbers) {
    std::array<char, 24> text{"######"};
    EXPECT_STREQ(itoa(12345, text.data(), 3), "12");
    EXPECT_STREQ(itoa(7, text.data(), 0), "12");
    EXPECT_STREQ(itoa(INT_MIN, text.data(), 24), std::to_string(INT_MIN).c_str());
    EXPECT_STREQ(_ltoa(LONG_MIN, text.data(), 10), std::to_string(LONG_MIN).c_str());
    EXPECT_STREQ(_ltoa(5, text.data(), 16), std::to_string(LONG_MIN).c_str());
}

TEST(RuntimeNamesDeathTest, FormatIntoAFixedBuffer) {
    struct {
        char text[8];
        char behind[4];
    } buffer{{}, "###"};
    EXPECT_EQ(sprintf_s(buffer.text, "%s-%d", "abc", 123), 7);
    EXPECT_STREQ(buffer.text, "abc-123");
    // Exactly as long as the buffer: passes, cut by one.
    EXPECT_EQ(sprintf_s(buffer.text, "%08d", 12345678), 8);
    EXPECT_STREQ(buffer.text, "1234567");
    EXPECT_STREQ(buffer.behind, "###");
    EXPECT_DEATH(sprintf_s(buffer.text, "%09d", 1), ":[0-9]+: failed assertion `result <= \\(int\\)_DstSize'\n");
}

}  // namespace
