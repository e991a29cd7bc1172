// Formatting, numbers against the C library's own, and spans. Random conversions and values are the property
// Format's.
#include "Platform/Uc16/Uc16.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cfenv>
#include <cfloat>
#include <climits>
#include <clocale>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include <Lum/Platform.h>

#include "tests/Generated.h"

namespace {

/// A copy of a text and its NUL in a heap block of their exact size.
struct Exact : Generated::ExactUnits {
    explicit Exact(std::u16string_view text) : Generated::ExactUnits(std::u16string(text) + u'\0') {}
};

/// What a buffer of `size` units gets, or of as many as are estimated (a negative size).
std::u16string FormatCut(int size, const char16_t* format, ...) {
    const Exact exact(format);
    va_list args;
    va_start(args, format);
    size = size < 0 ? uc16_estimateformatsize(exact.begin(), args) : size;
    const auto space = static_cast<std::size_t>(std::max(size, 0));
    const std::unique_ptr<unsigned short[]> buffer(new unsigned short[space]);
    const int length = size < 0 ? 0 : uc16_vswprintf(buffer.get(), space, exact.begin(), args);
    va_end(args);
    const bool isWhole = size <= 0 ? length == 0 : length < size && buffer[static_cast<std::size_t>(length)] == 0;
    return size < 0  ? u"cannot be represented"
           : isWhole ? std::u16string(buffer.get(), buffer.get() + length)
                     : u"is not terminated";
}

/// What a buffer of the estimated size gets.
std::u16string Format(const char16_t* format, auto... arguments) { return FormatCut(-1, format, arguments...); }

/// Sets the application's encoding for one test.
struct NarrowFormats : testing::Test {
    NarrowFormats() { Lum::Platform::SetApplicationTextEncoding(0x08000100); }
    ~NarrowFormats() override { Lum::Platform::SetApplicationTextEncoding(0xFFFF); }
};

TEST(Formats, TextsAndUnits) {
    EXPECT_EQ(Format(u"%s-%ls", u"a\xD800", Exact(u"bc").begin()), u"a\xD800-bc");
    EXPECT_EQ(Format(u"[%*s|%-*s|%.*s|%.s]", -4, u"c", 4, u"b", 1, u"abc", u"abc"), u"[c   |b   |a|]");
    EXPECT_EQ(Format(u"%.3s", Generated::ExactUnits(std::u16string_view(u"abc")).begin()), u"abc") << "needs no NUL";
    EXPECT_EQ(Format(u"%c%lc%3c%-3c|", 0x10041, 0xFFFF, u'b', u'c'), u"A\xFFFF  bc  |");
    EXPECT_EQ(Format(u"a%cb", 0), std::u16string(u"a\0b", 3));
    EXPECT_EQ(Format(u"%s|%8s|%.5s|%.6S", nullptr, nullptr, nullptr, nullptr), u"(null)|  (null)|(null|(null)");
    EXPECT_EQ(Format(u"%p|%8p|%-8p|%.1p|", nullptr, nullptr, nullptr, nullptr), u"(nil)|   (nil)|(nil)   |(nil)|");
    int untouched = 7;
    EXPECT_EQ(Format(u"ab%n%5n%hhnc%d", &untouched, &untouched, &untouched, 3), u"abc3");
    EXPECT_EQ(untouched, 7);
}

TEST(Formats, WhatIsUnknownIsCopied) {
    constexpr const char16_t* unknowns[] = {u"%",      u"100%",  u"%-5",   u"%5.3",  u"%ll",   u"%*.*", u"%\x20AC",
                                            u"%\x164", u"% ",    u"%hhs",  u"%Lc",   u"%zf",   u"%lp",  u"%0$",
                                            u"%1$*",   u"%1$*d", u"%*1$d", u"%65$d", u"%.-5y", u"%I64u"};
    for (const char16_t* const unknown : unknowns) {
        EXPECT_EQ(Format(unknown, 1), unknown);
        EXPECT_EQ(Format((std::u16string(u"%d|") + unknown).c_str(), 1, 2), std::u16string(u"1|") + unknown);
    }
    EXPECT_EQ(Format(u"%!%d%y%s", 1, u"a"), u"%!1%ya") << "no argument is taken";
    EXPECT_EQ(Format(u"%%%5%%d", 1), u"%%1");
    EXPECT_EQ(Format(u"%99999999999$d%99999999999y"), u"%99999999999$d%99999999999y");
}

TEST(Formats, PositionsTakeArgumentsInAnyOrder) {
    EXPECT_EQ(Format(u"%3$d", 1, 2, 3), u"3") << "what no conversion names is an int";
    EXPECT_EQ(Format(u"%1$n%1$%%9$y%2$d", nullptr, 2), u"%%9$y2");
    EXPECT_EQ(Format(u"%d %1$d %d", 1, 2), u"1 %1$d 2") << "positions or order, not both";
    EXPECT_EQ(Format(u"%1$d %1$s %1$f", 1), u"1 %1$s %1$f") << "one type";
    EXPECT_EQ(Format(u"%1$*1$s %1$s", u"a"), u"%1$*1$s a") << "one type";
    std::array<int, 64> most{};
    most.back() = 64;
    EXPECT_EQ(std::apply([](auto... numbers) { return Format(u"%64$d", numbers...); }, most), u"64");
}

TEST(Formats, EveryBufferIsCutAtItsEnd) {
    const std::u16string whole = u"ab -0012 xy|  1.50| cd ";
    for (int size = 0; size <= static_cast<int>(whole.size()) + 2; ++size) {
        const auto fitting = static_cast<std::size_t>(size > 0 ? size - 1 : 0);
        EXPECT_EQ(FormatCut(size, u"ab %.4d %s|%6.2f|%3.2s ", -12, u"xy", 1.5, u"cde"), whole.substr(0, fitting))
            << size;
    }
    // Of widths and precisions far beyond any buffer, only what fits is written.
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
    EXPECT_EQ(Format(u"%lS|%lC", u"é", u'é'), u"é|é");
    EXPECT_EQ(Format(u"[%S|%3C]", "ab\xFFz", 0xE9), u"[ab|   ]") << "ends before what is malformed";
    for (const auto& [precision, text] : {std::pair(0, u""), {1, u"é"}, {2, u"é"}, {3, u"é😀"}, {4, u"é😀é"}}) {
        const std::array<char, 8> bytes{'\xC3', '\xA9', '\xF0', '\x9F', '\x98', '\x80', '\xC3', '\xA9'};
        EXPECT_EQ(Format(u"%.*S", precision, bytes.data()), text) << "no NUL, and no half of a pair";
    }
    EXPECT_EQ(FormatCut(3, u"a%S%d", "😀", 1), u"a") << "nothing behind what did not fit";
    // Characters across the pieces in which texts are converted.
    std::string text = "x";
    for (int i = 0; i < 1000; ++i) {
        text += "é";
    }
    EXPECT_EQ(Format(u"%S", text.c_str()), u"x" + std::u16string(1000, u'é'));
    Lum::Platform::SetApplicationTextEncoding(0x0201);
    EXPECT_EQ(Format(u"%S%C", "\xE9\xFF", 0xE9), u"éÿé");
}

TEST_F(NarrowFormats, WriteWholeCharactersOfTheApplicationsEncoding) {
    const auto written = [](std::u16string_view text, std::size_t size) {
        const std::unique_ptr<char[]> bytes(new char[size]);
        const std::size_t count = uc16_wcstombs(bytes.get(), Exact(text).begin(), size);
        EXPECT_TRUE(count == size || bytes[count] == '\0');
        return std::string(bytes.get(), count);
    };
    const std::array<const char*, 8> expected{"", "a", "a", "aé", "aé", "aé", "aé", "aé😀"};
    for (std::size_t size = 0; size < expected.size(); ++size) {
        EXPECT_EQ(written(u"aé😀", size), expected[size]) << size;
    }
    EXPECT_EQ(written(u"a\xD800z", 20), "a");
    Lum::Platform::SetApplicationTextEncoding(0x0201);
    EXPECT_EQ(written(u"é€z", 20), "\xE9");
}

template <class... Arguments>
void DemandTheSame(const std::string& format, Arguments... arguments) {
    std::string expected(32'000, '\0');
    expected.resize(
        static_cast<std::size_t>(std::snprintf(expected.data(), expected.size(), format.c_str(), arguments...)));
    const std::u16string wide(format.begin(), format.end());
    ASSERT_EQ(Format(wide.c_str(), arguments...), std::u16string(expected.begin(), expected.end())) << format;
}

TEST(Numbers, HaveEveryDigitThatIsAskedFor) {
    for (const char* const format : {"%Lf", "%.17000Lf", "%.12000Le", "%#.20000Lg", "%.20000Lg", "%.100La"}) {
        for (const long double value : {LDBL_MAX, LDBL_TRUE_MIN, -0.1L}) {
            DemandTheSame(format, value);
        }
    }
    DemandTheSame("%p", reinterpret_cast<const void*>(UINTPTR_MAX));
    DemandTheSame("%05d|%05.0d|%05.3d", 7, 7, 7);
}

TEST(Numbers, FollowTheRoundingModeAsTheCLibraryDoes) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        for (const char* const format : {"%.0f", "%.1e", "%.2g", "%.1a"}) {
            DemandTheSame(format, 0.51);
            DemandTheSame(format, -1.55);
        }
    }
}

TEST(Numbers, DoNotFollowTheLocale) {
    // Those with a decimal comma where they are installed.
    for (const char* const name : {"C", "de_DE.UTF-8", "fr_FR.UTF-8", "ru_RU.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            EXPECT_EQ(Format(u"%f %'d %#g %a %Lf", 1.5, 1234567, 1.5, 1.5, 1.5L),
                      u"1.500000 1234567 1.50000 0x1.8p+0 1.500000");
        }
    }
    std::setlocale(LC_ALL, "C");
}

TEST(Spans, EndWhereTheStandardLibraryFindsTheEnd) {
    // Units that share their low byte, which one bit of a set stands for.
    const std::u16string alphabet = u"aabc,; \tz\u012C\u022C\u0161\xD800";
    std::mt19937 random(1);
    const auto text = [&](std::size_t longest) {
        // Now and then a long run before anything that could end it.
        const std::u16string run(random() % 4 == 0 ? random() % (2 * longest) : 0, u'a');
        return run + Generated::Text(random, alphabet, longest);
    };
    for (int round = 0; round < 20000; ++round) {
        const std::u16string units = text(30);
        const std::u16string set = text(7);
        const Exact exactSet(set);
        const std::size_t shift = random() % 8;
        const Exact block(std::u16string(shift, u'a') + units);
        const unsigned short* const exact = block.begin() + shift;
        const std::size_t included = std::min(units.find_first_not_of(set), units.size());
        const std::size_t excluded = std::min(units.find_first_of(set), units.size());
        ASSERT_EQ(uc16_wcsspn(exact, exactSet.begin()), included);
        ASSERT_EQ(uc16_wcscspn(exact, exactSet.begin()), excluded);
        ASSERT_EQ(uc16_wcspbrk(exact, exactSet.begin()), excluded < units.size() ? exact + excluded : nullptr);
    }
}

TEST(Spans, AreCopiedWithoutANul) {
    std::array<unsigned short, 3> to{7, 7, 7};
    EXPECT_EQ(uc16_wmemcpy(to.data(), Exact(u"ab").begin(), 2), to.data());
    EXPECT_EQ(uc16_wmemcpy(to.data(), nullptr, 0), to.data());
    EXPECT_EQ(to, (std::array<unsigned short, 3>{'a', 'b', 7}));
}

TEST(Spans, ReadNoPageBehindTheText) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    auto* const end = static_cast<unsigned short*>(pages) + page / sizeof(unsigned short);
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    for (std::size_t length = 0; length < 100; ++length) {
        unsigned short* const text = end - length - 1;
        std::fill(text, end - 1, 'a');
        for (const char16_t* const set : {u"", u",", u",;", u",;:.!"}) {
            EXPECT_EQ(uc16_wcscspn(text, Exact(set).begin()), length);
        }
        EXPECT_EQ(uc16_wcsspn(text, Exact(u"ab").begin()), length);
    }
    munmap(pages, 2 * page);
}

}  // namespace
