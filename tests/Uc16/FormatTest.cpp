#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdio>
#include <string>

#include <Lum/Platform.h>

#include "tests/Uc16/Units.h"

namespace {

using Units::Exact;
using Units::Format;
using Units::FormatCut;

/// Sets the application's encoding for one test.
class NarrowFormats : public ::testing::Test {
protected:
    static constexpr std::uint32_t kUtf8 = 0x08000100;
    static constexpr std::uint32_t kLatin1 = 0x0201;

    NarrowFormats() { Lum::Platform::SetApplicationTextEncoding(kUtf8); }
    ~NarrowFormats() override { Lum::Platform::SetApplicationTextEncoding(0xFFFF); }
};

TEST(Formats, TextsAndUnits) {
    EXPECT_EQ(Format(u""), u"");
    EXPECT_EQ(Format(u"%s-%ls", u"a\xD800", Exact(u"bc").Get()), u"a\xD800-bc");
    EXPECT_EQ(Format(u"[%5s|%-5s|%.2s|%05s]", u"abc", u"abc", u"abc", u"abc"), u"[  abc|abc  |ab|  abc]");
    EXPECT_EQ(Format(u"[%*s|%-*s|%*s]", 4, u"a", 4, u"b", -4, u"c"), u"[   a|b   |c   ]");
    EXPECT_EQ(Format(u"[%.*s|%.*s|%.s]", 1, u"abc", -1, u"abc", u"abc"), u"[a|abc|]");
    EXPECT_EQ(Format(u"%.3s", Exact(u"abc", false).Get()), u"abc") << "needs no NUL";
    EXPECT_EQ(Format(u"%c%lc%3c%-3c|", 0x10041, 0xFFFF, u'b', u'c'), u"A\xFFFF  bc  |");
    EXPECT_EQ(Format(u"a%cb", 0), std::u16string(u"a\0b", 3));
    EXPECT_EQ(Format(u"%s|%8s|%.5s|%.6S", nullptr, nullptr, nullptr, nullptr), u"(null)|  (null)|(null|(null)");
    EXPECT_EQ(Format(u"%p|%8p|%-8p|%.1p|", nullptr, nullptr, nullptr, nullptr), u"(nil)|   (nil)|(nil)   |(nil)|");
    int untouched = 7;
    EXPECT_EQ(Format(u"ab%n%5n%hhnc%d", &untouched, &untouched, &untouched, 3), u"abc3");
    EXPECT_EQ(untouched, 7);
}

TEST(Formats, WhatIsUnknownStandsAsItStands) {
    for (const char16_t* const unknown : {u"%",
                                          u"100%",
                                          u"%y",
                                          u"%-5",
                                          u"%5.3",
                                          u"%ll",
                                          u"%m",
                                          u"%*k",
                                          u"%*.*",
                                          u"%\x20AC",
                                          u"%\x164",
                                          u"% ",
                                          u"%hhs",
                                          u"%Lc",
                                          u"%zf",
                                          u"%lp",
                                          u"%0$",
                                          u"%1$*",
                                          u"%1$*d",
                                          u"%*1$d",
                                          u"%65$d",
                                          u"%99999999999$d",
                                          u"%99999999999y",
                                          u"%.-5y",
                                          u"%I64u"}) {
        EXPECT_EQ(Format(unknown, 1), unknown);
        EXPECT_EQ(Format((std::u16string(u"%d|") + unknown).c_str(), 1, 2), std::u16string(u"1|") + unknown);
    }
    EXPECT_EQ(Format(u"%!%d%y%s", 1, u"a"), u"%!1%ya") << "no argument is taken";
    EXPECT_EQ(Format(u"%%%5%%d", 1), u"%%1");
}

TEST(Formats, PositionsTakeArgumentsInAnyOrder) {
    EXPECT_EQ(Format(u"%2$s %1$d %2$s", 1, u"a"), u"a 1 a");
    EXPECT_EQ(Format(u"%3$s%1$lld%2$.1f%4$Lg", 1LL << 40, 2.5, u"c", 0.5L), u"c10995116277762.50.5");
    EXPECT_EQ(Format(u"[%2$*1$d][%2$-*1$d][%3$.*1$s]", 3, 7, u"abcd"), u"[  7][7  ][abc]");
    EXPECT_EQ(Format(u"%3$d", 1, 2, 3), u"3") << "what no conversion names is an int";
    EXPECT_EQ(Format(u"%1$n%2$d", nullptr, 2), u"2");
    EXPECT_EQ(Format(u"%1$%%9$y%1$d", 1), u"%%9$y1");
    EXPECT_EQ(Format(u"%1$d %d %s %1$d", 1), u"1 %d %s 1") << "one manner";
    EXPECT_EQ(Format(u"%d %1$d %d", 1, 2), u"1 %1$d 2") << "one manner";
    EXPECT_EQ(Format(u"%1$d %1$s %1$f", 1), u"1 %1$s %1$f") << "one type";
    EXPECT_EQ(Format(u"%1$*1$s %1$s", u"a"), u"%1$*1$s a") << "one type";
    EXPECT_EQ(Format(u"%64$d", 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24,
                     25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49,
                     50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64),
              u"64");
}

TEST(Formats, EveryBufferIsCutAtItsEnd) {
    const std::u16string whole = u"ab -0012 xy|  1.50| cd ";
    for (int size = 0; size <= static_cast<int>(whole.size()) + 2; ++size) {
        const auto room = static_cast<std::size_t>(size > 0 ? size - 1 : 0);
        EXPECT_EQ(FormatCut(size, u"ab %.4d %s|%6.2f|%3.2s ", -12, u"xy", 1.5, u"cde"), whole.substr(0, room)) << size;
    }
    // Far beyond what anything holds, without the work of it.
    EXPECT_EQ(FormatCut(4, u"%2000000000d", 1), u"   ");
    EXPECT_EQ(FormatCut(4, u"%.2000000000f", 1.0), u"1.0");
    EXPECT_EQ(FormatCut(4, u"%99999999999s", u""), u"   ");
    EXPECT_EQ(FormatCut(4, u"%*d", INT_MIN, 1), u"1  ");
}

TEST(Formats, NoEstimateOverflows) {
    for (const char16_t* const format :
         {u"%2147483647d", u"%99999999999d", u"%.2147483647d", u"%.99999999999f", u"%.2147483640e", u"%#.2147483640g",
          u"%.2147483640a", u"%2000000000d%2000000000d"}) {
        EXPECT_EQ(Format(format, 1, 1, 1.0), u"cannot be represented");
    }
    EXPECT_EQ(Format(u"%*d", INT_MIN, 1), u"cannot be represented");
    EXPECT_EQ(Format(u"%.2147483647g|%.2147483647s", 0.5, u"a"), u"0.5|a");
}

TEST_F(NarrowFormats, ConvertFromTheApplicationsEncoding) {
    EXPECT_EQ(Format(u"%S|%hs|%hS|%C%hc|", "a\xC3\xA9", "\xF0\x9F\x98\x80", "", 'x', 'y'), u"aé|😀||xy|");
    EXPECT_EQ(Format(u"[%4S|%-4S|%4C]", "é", "é", 'c'), u"[   é|é   |   c]");
    EXPECT_EQ(Format(u"%ls|%lS|%lc|%lC", u"é", u"é", u'é', u'é'), u"é|é|é|é");
    EXPECT_EQ(Format(u"[%S|%3C]", "ab\xFFz", 0xE9), u"[ab|   ]") << "ends before what is malformed";
    for (const auto& [precision, text] : {std::pair(0, u""), {1, u"é"}, {2, u"é"}, {3, u"é😀"}, {4, u"é😀é"}}) {
        const std::array<char, 8> bytes{'\xC3', '\xA9', '\xF0', '\x9F', '\x98', '\x80', '\xC3', '\xA9'};
        EXPECT_EQ(Format(u"%.*S", precision, bytes.data()), text) << "no NUL, and no half of a pair";
    }
    EXPECT_EQ(FormatCut(3, u"a%S%d", "😀", 1), u"a") << "nothing behind what did not fit";
    // Characters across the pieces in which texts are converted.
    const std::string many = "x" + std::string(1000, '\xC3');
    std::string text;
    for (const char c : many) {
        text += c == 'x' ? "x" : "é";
    }
    EXPECT_EQ(Format(u"%S", text.c_str()), u"x" + std::u16string(1000, u'é'));
    Lum::Platform::SetApplicationTextEncoding(kLatin1);
    EXPECT_EQ(Format(u"%S%C", "\xE9\xFF", 0xE9), u"éÿé");
}

TEST_F(NarrowFormats, WriteWholeCharactersOfTheApplicationsEncoding) {
    const auto written = [](std::u16string_view text, std::size_t size) {
        const std::unique_ptr<char[]> bytes(new char[size]);
        const std::size_t count = uc16_wcstombs(bytes.get(), Exact(text).Get(), size);
        EXPECT_TRUE(count == size || bytes[count] == '\0');
        return std::string(bytes.get(), count);
    };
    const std::array<const char*, 8> expected{"", "a", "a", "aé", "aé", "aé", "aé", "aé😀"};
    for (std::size_t size = 0; size < expected.size(); ++size) {
        EXPECT_EQ(written(u"aé😀", size), expected[size]) << size;
    }
    EXPECT_EQ(written(u"a\xD800z", 20), "a");
    Lum::Platform::SetApplicationTextEncoding(kLatin1);
    EXPECT_EQ(written(u"é€z", 20), "\xE9");
}

}  // namespace
