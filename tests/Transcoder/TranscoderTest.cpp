#include <Lum/Transcoder.h>

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <thread>

#include <Lum/Platform.h>

#include "Source/Transcoder/ConverterCache.h"
#include "tests/Allocations.h"

namespace {

using Lum::EncodingToCharSetID;
using Lum::Transcoder;

constexpr Lum::TextEncoding kUTF8 = 0x08000100;
constexpr Lum::TextEncoding kUnknown = 0xFFFF;

TEST(Transcoder, KnowsEncodingsByNameInAnyCase) {
    const struct {
        std::string name;
        Lum::TextEncoding encoding;
    } rows[] = {
        {"UTF-8", kUTF8},
        {"utf-16", 0x0100},
        {"Unicode", 0x0100},
        {"uTF-7", 0x04000100},
        {"Shift_JIS", 0x0A01},
        {"iso-8859-1", 0x0201},
        {"", kUnknown},
        {"no such", kUnknown},
        {std::string("utf-8\0", 6), kUnknown},
        {"utf-", kUnknown},
        {std::string(300, 'x'), kUnknown},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(EncodingToCharSetID(row.name), row.encoding) << row.name;
        EXPECT_TRUE(Transcoder::IsValidEncoding(row.name)) << row.name;
    }
}

TEST(Transcoder, ListsEncodingsUnderTheNamesThatLeadToThem) {
    std::size_t convertible = 0;
    for (const Lum::EncodingInfo& info : Lum::KnownEncodings()) {
        EXPECT_EQ(EncodingToCharSetID(info.name), info.encoding);
        for (const std::string& alias : info.aliases) {
            EXPECT_EQ(EncodingToCharSetID(alias), info.encoding) << alias;
        }
        convertible += info.isConvertible ? 1 : 0;
        // One of the two is in every encoding.
        EXPECT_EQ(
            info.isConvertible,
            !(Transcoder::UTF16ToEncoding(u"a", info.name) + Transcoder::UTF16ToEncoding(u"\u4E00", info.name)).empty())
            << info.name;
    }
    EXPECT_GT(convertible, 4U);
}

TEST(Transcoder, TakesTheSystemsEncodingsFromItsLanguage) {
    Lum::Platform::SetLocale("ja_JP.UTF-8");
    EXPECT_EQ(Transcoder::DefaultChannelEncoding(), "shift_jis");
    EXPECT_EQ(EncodingToCharSetID(Transcoder::PlatformEncoding()), 1U);
    Lum::Platform::SetLocale("de_DE.UTF-8");
    EXPECT_EQ(Transcoder::DefaultChannelEncoding(), "iso-8859-1");
    EXPECT_EQ(Transcoder::PlatformEncoding(), "macintosh");
    EXPECT_EQ(Transcoder::filesytemToUTF16("\xE9"), u"é");
    EXPECT_EQ(Transcoder::asFilesystemString(u"é"), "\xE9");
    Lum::Platform::SetLocale("");
}

TEST(Transcoder, ConvertsBothWays) {
    const std::string utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    const std::u16string wide = u"aé€😀";
    EXPECT_EQ(Transcoder::UTF8ToUTF16(utf8), wide);
    EXPECT_EQ(Transcoder::asUTF16(utf8), wide);
    EXPECT_EQ(Transcoder::EncodingToUTF16(utf8, "UTF-8"), wide);
    EXPECT_EQ(Transcoder::UTF16ToUTF8(wide), utf8);
    EXPECT_EQ(Transcoder::asUTF8(wide), utf8);
    EXPECT_EQ(Transcoder::UTF16ToEncoding(wide, "utf-8"), utf8);
    EXPECT_EQ(Transcoder::EncodingToUTF8("a\xE9", "iso-8859-1"), "a\xC3\xA9");
    EXPECT_EQ(Transcoder::UTF8ToEncoding("a\xC3\xA9", "latin1"), "a\xE9");
    EXPECT_EQ(Transcoder::UTF8ToUTF16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
    EXPECT_EQ(Transcoder::UTF8ToUTF16(""), u"");
    EXPECT_EQ(Transcoder::EncodingToUTF16("a", "no such"), u"");
    EXPECT_EQ(Transcoder::UTF16ToEncoding(u"a", "no such"), "");
}

// A piece is 512 units on the way to UTF-16 and 512 bytes on the way back, less where the next
// character does not fit. The piece that ends at a bad element is there twice, whatever it holds.
TEST(Transcoder, GivesThePieceThatFailsTwice) {
    const auto x = [](std::size_t count) { return std::string(count, 'x'); };
    const std::string face = "\xF0\x9F\x98\x80";
    const struct {
        std::string input, once, twice;
    } toWide[] = {
        {"ab\xFFz", "", "ab"},
        {"\xFFz", "", ""},
        {"ab\xE2\x82", "", "ab"},
        {x(510) + face + "\xFF", "", x(510) + face},
        {x(511) + face + "\xFF", x(511), face},
        {x(512) + "\xFF", "", x(512)},
        {x(512) + "y\xFF", x(512), "y"},
        {x(1024) + "y\xFF", x(1024), "y"},
    };
    for (const auto& row : toWide) {
        EXPECT_EQ(Transcoder::asUTF8(Transcoder::asUTF16(row.input)), row.once + row.twice + row.twice);
    }
    const std::u16string lone(1, char16_t{0xDC00});
    EXPECT_EQ(Transcoder::asUTF8(std::u16string(511, u'x') + u"é" + lone), x(511) + "éé");
    EXPECT_EQ(Transcoder::asUTF8(std::u16string(510, u'x') + u"é" + lone), x(510) + "é" + x(510) + "é");
    EXPECT_EQ(Transcoder::asUTF8(u"ab\xD800"), "abab");
    const std::u16string euros(600, u'€');
    EXPECT_EQ(Transcoder::asUTF16(Transcoder::asUTF8(euros)), euros);
}

TEST(Transcoder, UsesOneConverterForSuccessiveTexts) {
    Lum::ConverterCache& cache = Lum::ConverterCaches::Get()->toUTF16Converters;
    const std::string text(100, 'x');
    const auto convert = [&](const char* encoding) {
        EXPECT_EQ(Transcoder::EncodingToUTF16(text, encoding).size(), 100U);
    };
    convert("utf-8");
    const std::size_t before = Allocations::Count();
    convert("utf-8");
    convert("utf-8");
    EXPECT_EQ(Allocations::Count() - before, 2U);  // the results
    EXPECT_EQ(cache.Count(kUTF8), 1U);
    // The thread's own place holds one of the two, the map the other.
    for (int i = 0; i < 3; ++i) {
        convert("latin1");
        convert("utf-8");
    }
    EXPECT_EQ(cache.Count(kUTF8), 1U);
    EXPECT_EQ(cache.Count(0x0201), 1U);
    EXPECT_EQ(Transcoder::EncodingToUTF16("\xFF", "utf-8"), u"");
    // A converter left behind by another thread is found, one that is in use is not.
    const Lum::ConverterCache::Entry used = cache.Take(kUTF8);
    std::thread([&] { convert("utf-8"); }).join();
    EXPECT_EQ(cache.Count(kUTF8), 1U);
    convert("utf-8");
    EXPECT_EQ(cache.Count(kUTF8), 1U);
    EXPECT_EQ(Lum::ConverterCaches::Get()->fromUTF32Converters.Count(kUTF8), 0U);
}

TEST(Transcoder, GivesItsConverterBackWhenMemoryFails) {
    const std::string text(2000, 'x');
    const std::u16string expected(2000, u'x');
    Lum::ConverterCache& cache = Lum::ConverterCaches::Get()->toUTF16Converters;
    for (std::size_t more = 0; more < 3; ++more) {
        for (const char* encoding : {"us-ascii", "utf-8"}) {
            Allocations::FailAfter(more);
            try {
                EXPECT_EQ(Transcoder::EncodingToUTF16(text, encoding), expected);
            } catch (const std::bad_alloc&) {
            }
            Allocations::NeverFail();
            EXPECT_LE(cache.Count(EncodingToCharSetID(encoding)), 1U);
            std::thread([&] { EXPECT_EQ(Transcoder::EncodingToUTF16(text, encoding), expected); }).join();
        }
    }
}

}  // namespace
