#include <Lum/Transcoder.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <tuple>

#include <Lum/Platform.h>

#include "tests/Allocations.h"

namespace {

using Lum::EncodingToCharSetID;
using Lum::Transcoder;

TEST(Transcoder, KnowsEncodingsByNameInAnyCase) {
    EXPECT_EQ(EncodingToCharSetID("uTF-8"), 0x08000100U);
    for (const std::string& name : {std::string(), std::string("utf-8\0", 6), std::string(300, 'x')}) {
        EXPECT_EQ(EncodingToCharSetID(name), 0xFFFFU) << name;
        EXPECT_TRUE(Transcoder::IsValidEncoding(name)) << name;
    }
}

TEST(Transcoder, ListsEncodingsUnderTheNamesThatLeadToThem) {
    // Applications store the numbers: this changes with any of them, and with any preferred name.
    std::uint64_t digest = 0;
    for (const Lum::EncodingInfo& info : Lum::KnownEncodings()) {
        for (const char c : info.name + ' ' + std::to_string(info.encoding)) {
            digest = 31 * digest + static_cast<unsigned char>(c);
        }
        EXPECT_EQ(EncodingToCharSetID(info.name), info.encoding);
        for (const std::string& alias : info.aliases) {
            EXPECT_EQ(EncodingToCharSetID(alias), info.encoding) << alias;
        }
        // One of the two is in every encoding.
        EXPECT_EQ(
            info.isConvertible,
            !(Transcoder::UTF16ToEncoding(u"a", info.name) + Transcoder::UTF16ToEncoding(u"\u4E00", info.name)).empty())
            << info.name;
    }
    EXPECT_EQ(digest, 0xE8CF813DEB6BC7B4U);
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
    EXPECT_EQ(Transcoder::UTF16ToUTF8(wide), utf8);
    EXPECT_EQ(Transcoder::EncodingToUTF8("a\xE9", "iso-8859-1"), "a\xC3\xA9");
    EXPECT_EQ(Transcoder::UTF8ToEncoding("a\xC3\xA9", "latin1"), "a\xE9");
    EXPECT_EQ(Transcoder::UTF8ToUTF16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
    EXPECT_EQ(Transcoder::EncodingToUTF16("a", "no such"), u"");
    EXPECT_EQ(Transcoder::UTF16ToEncoding(u"a", "no such"), "");
}

// Compatibility: a block has 512 units on the way to UTF-16 and 512 bytes on the way back, or less if the next
// character does not fit. The block that ends at a bad element is in the result twice.
TEST(Transcoder, WritesTheBlockThatFailsTwice) {
    const auto x = [](std::size_t count) { return std::string(count, 'x'); };
    const std::string face = "\xF0\x9F\x98\x80";
    const std::tuple<std::string, std::string, std::string> toWide[] = {
        {"ab\xFFz", "", "ab"},
        {"ab\xE2\x82", "", "ab"},
        {x(510) + face + "\xFF", "", x(510) + face},
        {x(511) + face + "\xFF", x(511), face},
        {x(512) + "\xFF", "", x(512)},
        {x(512) + "y\xFF", x(512), "y"},
    };
    for (const auto& [input, once, twice] : toWide) {
        EXPECT_EQ(Transcoder::asUTF8(Transcoder::asUTF16(input)), once + twice + twice);
    }
    const std::u16string lone(1, char16_t{0xDC00});
    EXPECT_EQ(Transcoder::asUTF8(std::u16string(511, u'x') + u"é" + lone), x(511) + "éé");
    EXPECT_EQ(Transcoder::asUTF8(std::u16string(510, u'x') + u"é" + lone), x(510) + "é" + x(510) + "é");
    EXPECT_EQ(Transcoder::asUTF8(u"ab\xD800"), "abab");
}

/// The allocations of a conversion from `encoding` of a text of 100 bytes, which needs one for its result.
std::size_t AllocationsOf(const char* encoding) {
    const std::string text(100, 'x'), name = encoding;
    const std::size_t before = Allocations::Count();
    EXPECT_EQ(Transcoder::EncodingToUTF16(text, name).size(), 100U);
    return Allocations::Count() - before;
}

TEST(Transcoder, MakesNoConverterWhileOneIsIdle) {
    for (int i = 0; i < 4; ++i) {
        for (const char* const encoding : {"latin1", "us-ascii", "utf-8", "latin1"}) {
            const std::size_t allocations = AllocationsOf(encoding);
            EXPECT_TRUE(i == 0 || allocations == 1) << encoding;
        }
    }
    // One that another thread used last is found as well.
    for (int i = 0; i < 20; ++i) {
        std::thread([] { EXPECT_EQ(AllocationsOf("latin1"), 1U); }).join();
    }
    EXPECT_EQ(AllocationsOf("latin1"), 1U);
}

}  // namespace
