#include "Source/URI/Escaping.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <tuple>
#include <utility>
#include <vector>

#include <Lum/URI.h>

#include "Source/URI/Unescaping.h"
#include "tests/Generated.h"

namespace {

using Lum::URI;
using namespace Lum::Internal;
using namespace std::string_literals;

// The definitions, a byte at a time.
std::string EscapeSlowly(const std::string& text, const std::string& members) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const std::string escape{'%', "0123456789ABCDEF"[byte / 16], "0123456789ABCDEF"[byte % 16]};
        result += members.find(c) != std::string::npos ? escape : std::string(1, c);
    }
    return result;
}

std::string UnescapeSlowly(const std::string& text, bool highBytesOnly) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != '%' || text.size() - i < 3) {
            result += text[i++];
            continue;
        }
        char byte = 0;
        const auto taken = static_cast<std::size_t>(URI::ParseHex(text.substr(i, 3), byte));
        const bool decodes = !highBytesOnly || static_cast<signed char>(byte) < 0;
        result += decodes ? std::string(1, byte) : text.substr(i, taken);
        i += taken;
    }
    return result;
}

/// What `unescape` makes of `text` in a heap block of its exact size.
std::string UnescapeExactly(UnescapeFunction unescape, const std::string& text) {
    const Generated::Exact bytes(text);
    return {bytes.begin(), unescape(bytes.begin(), bytes.end())};
}

TEST(Escaping, ExamplesOfTheHeader) {
    EXPECT_EQ(URI::Escape("a\0\xE9 %20"s), "a\0\xE9%20%2520"s);
    EXPECT_EQ(URI::EscapeChars("a\0\xE9\x7F"s, ""), "a%00\xE9%7F");
    EXPECT_EQ(URI::EscapeChars("\xE9/a", "\xE9/"), "%E9%2Fa");
    EXPECT_EQ(URI::Escape(std::string(5000, 'x') + ' '), std::string(5000, 'x') + "%20");
    EXPECT_EQ(URI::Unescape("%41%C3%A9", true), "%41\xC3\xA9");
    EXPECT_TRUE(URI::VerifyAlpha("") && URI::VerifyAlpha("azAZ"));
    EXPECT_FALSE(URI::VerifyAlpha("abc2") || URI::VerifyAlpha("\xE9") || URI::VerifyAlpha("@") ||
                 URI::VerifyAlpha("{"));
    EXPECT_TRUE(URI::IsIPv6("[]") && URI::IsIPv6("[::1]") && URI::IsIPv6("a::b"));
    EXPECT_FALSE(URI::IsIPv6("") || URI::IsIPv6("[") || URI::IsIPv6("]") || URI::IsIPv6("host:80"));
    EXPECT_EQ(URI::URIuric, URI::URIreserved + URI::URIalpha + URI::URIdigit + URI::URImark);
}

TEST(Escaping, ParseHexReadsTwoCharactersAsTheStandardScanDoes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string triple{'%', static_cast<char>(first), static_cast<char>(second)};
            // Other characters move to the left over spaces, and the last one stays where it was as well.
            const std::string squeezed{'%', first == ' ' ? triple[2] : triple[1], triple[2]};
            std::string digits = squeezed.c_str() + 1;
            digits.erase(0, digits.find_first_not_of(" \t\n\v\f\r"));
            unsigned value = 0;
            const int scanned = std::sscanf(squeezed.c_str() + 1, "%x", &value);
            // Where C libraries differ: a sign alone is no number, and "0x" alone is the number 0.
            const bool isZero = digits == "0x" || digits == "0X";
            const bool isNumber = isZero || (scanned != 0 && digits != "+" && digits != "-");
            char byte = 'z';
            ASSERT_EQ(URI::ParseHex(triple, byte), isNumber ? 3 : 1) << first << ' ' << second;
            ASSERT_EQ(byte, isNumber ? static_cast<char>(isZero ? 0 : value) : '%') << first << ' ' << second;
        }
    }
}

TEST(Escaping, ParseHexTakesTextsOfAnyLength) {
    for (const auto& [text, expected, length] : std::vector<std::tuple<std::string, char, int>>{
             {"", '\0', 1}, {" b", 'b', 1}, {"   ", ' ', 1}, {" %4", '\x44', 3}, {"  %", '%', 1}, {"%412", '%', 1}}) {
        char byte = 'z';
        EXPECT_EQ(URI::ParseHex(text, byte), length) << text;
        EXPECT_EQ(byte, expected) << text;
    }
}

TEST(Escaping, BlocksGiveWhatSingleBytesGive) {
    std::mt19937 random(2);
    const std::vector<std::string> alphabets{Generated::EveryByte(), "%4aG 0x-\xE9", "abcdefghij%", "abcdefghijklmnop"};
    const std::vector<std::pair<const EscapeSet*, std::string>> sets{
        {&URIexcludedBitMap, URI::URIexcluded},
        {&ModifiedURIEXcludedBitMap, URI::URIexcluded + "/;"},
        {&URIqueryexcludedBitMap, URI::URIqueryexcluded},
        {&URInonhierexcludedBitMap, URI::URInonhierexcluded},
        {&URIhighBytesExcludedBitMap, Generated::EveryByte().substr(128)}};
    for (int round = 0; round < 4000; ++round) {
        // Now and then longer than what is collected on the stack in one go.
        const std::size_t longest = round % 50 == 0 ? 5000 : 90;
        const std::string text = Generated::Text(random, alphabets[random() % alphabets.size()], longest);
        const Generated::Exact exact(text);
        for (const auto& [set, members] : sets) {
            ASSERT_EQ(FastEscapeChars(exact.View(), *set), EscapeSlowly(text, members)) << text;
        }
        ASSERT_EQ(UnescapeText(exact.View()), UnescapeSlowly(text, false)) << text;
        const std::string escaped = EscapeSlowly(UnescapeSlowly(text, false), URI::URIexcluded);
        ASSERT_EQ(IsEscapedBy(exact.View(), URIexcludedBitMap), escaped == text) << text;
        ASSERT_TRUE(IsEscapedBy(escaped, URIexcludedBitMap)) << escaped;
        const std::string list = Generated::Text(random, alphabets[random() % alphabets.size()], 2000);
        ASSERT_EQ(URI::EscapeChars(text, list), EscapeSlowly(text, list + URI::URIcontrol + '\0')) << text << list;
    }
}

TEST(Escaping, EveryUnescaperGivesWhatSingleBytesGive) {
    const auto expectTheSame = [](const std::string& text) {
        const std::string expected = UnescapeSlowly(text, false);
        ASSERT_EQ(UnescapeExactly(Lum::Internal::Plain::Unescape<false>, text), expected) << text;
        Generated::OnEveryCpu(
            [&](Lum::Internal::CpuTier) { ASSERT_EQ(UnescapeExactly(FastestUnescape(), text), expected) << text; });
        ASSERT_EQ(UnescapeExactly(Lum::Internal::Plain::Unescape<true>, text), UnescapeSlowly(text, true)) << text;
    };
    // Every two bytes behind a "%", at changing positions of a block and across its end.
    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        std::string text((pair + pair / 256) % 17, 'x');
        text += {'%', static_cast<char>(pair / 256), static_cast<char>(pair % 256)};
        expectTheSame(text + "41%42-abcdefghijklmnopq");
    }
    // Mostly proper escapes, so that whole blocks hold nothing else, and now and then something odd.
    const std::vector<std::string> pieces{"%41", "%C3", "%a9", "%25", "%fF", "x", "yz", "0123456789", "xx%20xx"};
    const std::vector<std::string> odd{"%", "%%", "%4%", "%4%41", "% 4", "%g1", "%0x", "%-1", std::string(70, 'k')};
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto count = random() % 40; count > 0; --count) {
            const auto& from = random() % 16 == 0 ? odd : pieces;
            text += from[random() % from.size()];
        }
        expectTheSame(text);
    }
}

}  // namespace
