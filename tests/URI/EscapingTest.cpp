#include "Source/URI/Escaping.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <Lum/URI.h>

#include "Source/URI/Unescaping.h"
#include "tests/Generated.h"

namespace {

using Lum::URI;
using namespace std::string_literals;

// The definitions, a byte at a time.
std::string EscapeSlowly(const std::string& text, const Lum::CharBitMap& set) {
    std::string result;
    for (const char c : text) {
        std::array<char, 8> escape{};
        std::snprintf(escape.data(), escape.size(), "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        result += set.Contains(static_cast<unsigned char>(c)) ? std::string(escape.data()) : std::string(1, c);
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
std::string UnescapeExactly(Lum::UnescapeFunction unescape, const std::string& text) {
    std::vector<char> bytes(text.begin(), text.end());
    const char* const end = unescape(bytes.data(), bytes.data() + bytes.size());
    return {static_cast<const char*>(bytes.data()), end};
}

TEST(Escaping, ExamplesOfTheHeader) {
    EXPECT_EQ(URI::Escape("a b%"), "a%20b%25");
    EXPECT_EQ(URI::Escape("%20"), "%2520");
    EXPECT_EQ(URI::Escape("a\0\xE9"s), "a\0\xE9"s);
    EXPECT_EQ(URI::EscapeChars("a\0\xE9\x7F"s, ""), "a%00\xE9%7F");
    EXPECT_EQ(URI::EscapeChars("\xE9/a", "\xE9/"), "%E9%2Fa");
    EXPECT_EQ(URI::Unescape("%41%4", false), "A%4");
    EXPECT_EQ(URI::Unescape("100%", false), "100%");
    EXPECT_EQ(URI::Unescape("%zz%%41", false), "%zz%A");
    EXPECT_EQ(URI::Unescape("%4G%41", false),
              "\x04"
              "A");
    EXPECT_EQ(URI::Unescape("%41%C3%A9", true), "%41\xC3\xA9");
    EXPECT_TRUE(URI::VerifyAlpha(""));
    EXPECT_TRUE(URI::VerifyAlpha("abcXYZ"));
    EXPECT_FALSE(URI::VerifyAlpha("abc2"));
    EXPECT_FALSE(URI::VerifyAlpha("\xE9"));
    for (const auto& [host, isLiteral] : std::vector<std::pair<std::string, bool>>{{"", false},
                                                                                   {"[]", true},
                                                                                   {"[", false},
                                                                                   {"]", false},
                                                                                   {"[::1]", true},
                                                                                   {"a::b", true},
                                                                                   {"host:80", false}}) {
        EXPECT_EQ(URI::IsIPv6(host), isLiteral) << host;
    }
}

TEST(Escaping, ParseHexReadsTwoCharactersAsTheStandardScanDoes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string triple{'%', static_cast<char>(first), static_cast<char>(second)};
            // Spaces move to the left, and what stood last stays there as well.
            std::string squeezed = triple;
            if (first == ' ') {
                squeezed[1] = triple[2];
            }
            std::string digits = squeezed.c_str() + 1;
            digits.erase(0, digits.find_first_not_of(" \t\n\v\f\r"));
            unsigned value = 0;
            int scanned = std::sscanf(squeezed.c_str() + 1, "%x", &value);
            // Where C libraries differ: a sign alone is no number, and "0x" alone is the number 0.
            if (digits == "+" || digits == "-") {
                scanned = 0;
            } else if (digits == "0x" || digits == "0X") {
                scanned = 1;
                value = 0;
            }
            const char expected = scanned == 0 ? '%' : static_cast<char>(value);
            const int length = scanned == 0 ? 1 : 3;
            char byte = 'z';
            EXPECT_EQ(URI::ParseHex(triple, byte), length) << first << ' ' << second;
            EXPECT_EQ(byte, expected) << first << ' ' << second;
        }
    }
}

TEST(Escaping, ParseHexTakesTextsOfAnyLength) {
    struct Row {
        std::string text;
        char byte;
        int length;
    };
    for (const Row& row : std::vector<Row>{{"", '\0', 1},
                                           {"ab", 'a', 1},
                                           {" b", 'b', 1},
                                           {"   ", ' ', 1},
                                           {"  4", '4', 1},
                                           {" %4", '\x44', 3},
                                           {"  %", '%', 1},
                                           {"%412", '%', 1},
                                           {"%0x", '\0', 3},
                                           {"%-1", '\xFF', 3}}) {
        char byte = 'z';
        EXPECT_EQ(URI::ParseHex(row.text, byte), row.length) << row.text;
        EXPECT_EQ(byte, row.byte) << row.text;
    }
}

TEST(Escaping, BlocksGiveWhatSingleBytesGive) {
    std::mt19937 random(2);
    const std::vector<std::string> alphabets{Generated::EveryByte(), "%4aG 0x-\xE9", "abcdefghij%", "abcdefghijklmnop"};
    const std::vector<std::pair<const Lum::EscapeSet*, const Lum::CharBitMap*>> sets{
        {&Lum::kExcluded, &Lum::URIexcludedBitMap},
        {&Lum::kModifiedExcluded, &Lum::ModifiedURIEXcludedBitMap},
        {&Lum::kQueryExcluded, &Lum::URIqueryexcludedBitMap},
        {&Lum::kNonhierExcluded, &Lum::URInonhierexcludedBitMap},
        {&Lum::kHighBytesExcluded, &Lum::URIhighBytesExcludedBitMap}};
    for (int round = 0; round < 4000; ++round) {
        // Now and then longer than what is collected on the stack in one go.
        const std::size_t longest = round % 50 == 0 ? 5000 : 90;
        const std::string text = Generated::Text(random, alphabets[random() % alphabets.size()], longest);
        const Generated::Exact exact(text);
        for (const auto& [set, bitmap] : sets) {
            ASSERT_EQ(Lum::FastEscapeChars(exact.View(), *set), EscapeSlowly(text, *bitmap)) << text;
        }
        ASSERT_EQ(Lum::UnescapeText(exact.View(), false), UnescapeSlowly(text, false)) << text;
        ASSERT_EQ(Lum::UnescapeText(exact.View(), true), UnescapeSlowly(text, true)) << text;
    }
}

TEST(Escaping, EveryUnescaperGivesWhatSingleBytesGive) {
    const auto demandTheSame = [](const std::string& text) {
        const std::string expected = UnescapeSlowly(text, false);
        ASSERT_EQ(UnescapeExactly(Lum::Plain::Unescape<false>, text), expected) << text;
        ASSERT_EQ(UnescapeExactly(Lum::FastestUnescape(), text), expected) << text;
        ASSERT_EQ(UnescapeExactly(Lum::Plain::Unescape<true>, text), UnescapeSlowly(text, true)) << text;
    };
    // Every pair of digits and what is none, in turn at every place of a block and across its border.
    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        std::string text((pair + pair / 256) % 17, 'x');
        text += {'%', static_cast<char>(pair / 256), static_cast<char>(pair % 256)};
        demandTheSame(text + "41%42-abcdefghijklmnopq");
    }
    // Mostly proper escapes, so that whole blocks hold nothing else, and now and then one that is not.
    const std::vector<std::string> pieces{"%41", "%C3", "%a9", "%25", "%fF", "x", "yz", "0123456789", "xx%20xx"};
    const std::vector<std::string> odd{"%", "%%", "%4%", "%4%41", "% 4", "%g1", "%0x", "%-1", std::string(70, 'k')};
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto count = random() % 40; count > 0; --count) {
            const auto& from = random() % 16 == 0 ? odd : pieces;
            text += from[random() % from.size()];
        }
        demandTheSame(text);
    }
}

}  // namespace
