#include "Platform/TextEncoding/TextEncodingConverter.h"

#include <gtest/gtest.h>

#include <iterator>
#include <tuple>

#include "Source/Utf8/Utf8.h"
#include "tests/Generated.h"
#include "tests/TextEncoding/Converted.h"

namespace {

using Converted::FromUtf16;
using Converted::ToUtf16;
namespace TextConversion = Lum::Internal::TextConversion;

TEST(UnicodeConverters, EveryScalarComesBack) {
    std::u16string scalars;
    for (char32_t unit = 0; unit < 0x10000; ++unit) {
        scalars += (unit & 0xF800) == 0xD800 ? u"" : std::u16string(1, static_cast<char16_t>(unit));
    }
    for (char32_t scalar = 0x10000; scalar < 0x110000; ++scalar) {
        scalars += {static_cast<char16_t>(0xD7C0 + (scalar >> 10)), static_cast<char16_t>(0xDC00 | (scalar & 0x3FF))};
    }
    // UTF-8, UTF-16 in its three forms, UTF-7, UTF-32, GB 18030.
    for (const TextEncoding encoding :
         {0x08000100U, 0x0100U, 0x10000100U, 0x14000100U, 0x04000100U, 0x0C000100U, 0x0632U}) {
        if (encoding == 0x0632) {
            // Private characters that newer versions of ICU take for others, as GB 18030-2022 does.
            constexpr std::u16string_view moved =
                u"\uE5E5\uE78D\uE78E\uE78F\uE790\uE791\uE792\uE793\uE794\uE795\uE796\uE81E\uE826\uE82B\uE82C"
                u"\uE832\uE843\uE854\uE864";
            std::erase_if(scalars, [&](char16_t unit) { return moved.find(unit) != moved.npos; });
        }
        const auto out = FromUtf16(encoding, scalars);
        EXPECT_EQ(out.status, noErr) << encoding;
        const auto back = ToUtf16(encoding, out.text);
        EXPECT_EQ(back.status, noErr) << encoding;
        EXPECT_TRUE(back.text == Converted::AsBytes(scalars)) << encoding;
    }
}

TEST(UnicodeConverters, IllFormedUtf8HasTheStatusOfItsClass) {
    const std::tuple<const char*, std::string, OSStatus> rows[] = {
        {"a continuation byte alone", "\x80", kTextMalformedInputErr},
        {"overlong in two", "\xC1\xBF", kTextMalformedInputErr},
        {"overlong in three", "\xE0\x9F\xBF", kTextMalformedInputErr},
        {"overlong in three, cut", "\xE0\x9F", kTextMalformedInputErr},
        {"overlong in four", "\xF0\x8F\xBF\xBF", kTextMalformedInputErr},
        {"a lead surrogate", "\xED\xA0\x80", kTextMalformedInputErr},
        {"above 10FFFF", "\xF4\x90\x80\x80", kTextMalformedInputErr},
        {"a first byte of none", "\xF5\x80\x80\x80", kTextMalformedInputErr},
        {"one of two", "\xC2", kTECPartialCharErr},
        {"one of two, then another character", "\xC2x", kTextMalformedInputErr},
        {"two of three", "\xE2\x82", kTECPartialCharErr},
        {"two of three, then another character", "\xE2\x82x", kTextMalformedInputErr},
        {"three of four", "\xF0\x9F\x98", kTECPartialCharErr},
        {"three of four, then another character", "\xF0\x9F\x98x", kTextMalformedInputErr},
    };
    for (const auto& [what, bytes, status] : rows) {
        for (const std::string before : {"", "\xC3\xA9", "0123456789abcdef0123456789abcdef"}) {
            const auto result = ToUtf16(0x08000100, before + bytes);
            EXPECT_EQ(result.status, status) << what;
            EXPECT_EQ(result.read, before.size()) << what;
            EXPECT_EQ(result.text, ToUtf16(0x08000100, before).text) << what;
        }
    }
}

TEST(UnicodeConverters, UnpairedSurrogatesAreMalformedOnTheWayOut) {
    for (const TextEncoding encoding : {0x08000100U, 0x0100U, 0x10000100U, 0x14000100U, 0x0201U, 0x0600U}) {
        for (const std::u16string bad : {u"\xDC00z", u"\xD800z", u"\xD800\xD800"}) {
            const auto result = FromUtf16(encoding, u"ab" + bad);
            EXPECT_EQ(result.status, kTextMalformedInputErr) << encoding;
            EXPECT_EQ(result.read, 4U) << encoding;
        }
        EXPECT_EQ(FromUtf16(encoding, u"ab\xD83D").status, kTECPartialCharErr) << encoding;
    }
}

/// Expects two functions to do the same with `input` and any size of output.
void ExpectSame(TextConversion::ConvertFunction fast, TextConversion::ConvertFunction plain, const std::string& input) {
    const Generated::Exact exact(input);
    const TextConversion::Input bytes(reinterpret_cast<const unsigned char*>(exact.View().data()), input.size());
    for (std::size_t space = 0; space <= 3 * input.size(); space += 1 + space / 3) {
        const auto fastOutput = std::make_unique<unsigned char[]>(space);
        const auto plainOutput = std::make_unique<unsigned char[]>(space);
        const auto a = fast(bytes, {fastOutput.get(), space});
        const auto b = plain(bytes, {plainOutput.get(), space});
        ASSERT_EQ(std::tie(a.ending, a.read, a.written), std::tie(b.ending, b.read, b.written)) << space;
        ASSERT_EQ(std::memcmp(fastOutput.get(), plainOutput.get(), a.written), 0) << space;
    }
}

TEST(UnicodeConverters, TheFastUtf8GivesWhatThePlainOneGives) {
    // The first and last characters of each length, and what is next to them and ill-formed.
    const std::string ends[] = {
        "a",          "\x7F",       "\u0080",       "\u07FF",       "\u0800",           "\uD7FF",          "\uFFFF",
        "\U00010000", "\U0010FFFF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"};
    constexpr std::size_t wellFormed = 9;
    std::mt19937 random(3);
    for (int round = 0; round < 1500; ++round) {
        std::string text;
        while (text.size() < 600 && random() % 32 != 0) {
            const std::string& character = ends[random() % (round % 4 == 1 ? std::size(ends) : wellFormed)];
            for (std::size_t i = random() % 64; i > 0; --i) {
                text += character;
            }
        }
        std::string units = ToUtf16(0x08000100, text).text;
        if (round % 2 == 0 && !text.empty()) {
            text[random() % text.size()] = static_cast<char>(random());
            units[random() % units.size()] = static_cast<char>(0xD8 + random() % 8);
        }
        Generated::OnEveryCpu([&](Lum::Internal::CpuTier) {
            const auto fast = TextConversion::FastestUtf8();
            ExpectSame(fast.toUtf16, TextConversion::Plain::Utf8ToUtf16, text);
            ExpectSame(fast.fromUtf16, TextConversion::Plain::Utf16ToUtf8, units);
        });
    }
}

}  // namespace
