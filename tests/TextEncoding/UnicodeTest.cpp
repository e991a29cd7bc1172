#include "Platform/TextEncoding/TextEncodingConverter.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>
#include <string>

#include "Platform/TextEncoding/Utf8.h"
#include "tests/Generated.h"
#include "tests/TextEncoding/Converted.h"

namespace {

using Converted::FromUtf16;
using Converted::ToUtf16;

struct IllFormed {
    const char* what;
    std::string bytes;
    OSStatus status;
};

std::u16string EveryScalar() {
    std::u16string scalars;
    for (char32_t scalar = 0; scalar < 0x110000; ++scalar) {
        if (scalar >= 0x10000) {
            scalars += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
            scalars += static_cast<char16_t>(0xDC00 | (scalar & 0x3FF));
        } else if (scalar < 0xD800 || scalar > 0xDFFF) {
            scalars += static_cast<char16_t>(scalar);
        }
    }
    return scalars;
}

TEST(UnicodeConverters, EveryScalarComesBack) {
    const std::u16string scalars = EveryScalar();
    // UTF-8, UTF-16 in its three forms, UTF-7, UTF-32, GB 18030.
    for (const TextEncoding encoding :
         {0x08000100U, 0x0100U, 0x10000100U, 0x14000100U, 0x04000100U, 0x0C000100U, 0x0632U}) {
        const auto out = FromUtf16(encoding, scalars);
        EXPECT_EQ(out.status, noErr) << encoding;
        const auto back = ToUtf16(encoding, out.text);
        EXPECT_EQ(back.status, noErr) << encoding;
        EXPECT_TRUE(back.text == scalars) << encoding;
    }
}

TEST(UnicodeConverters, IllFormedUtf8IsToldByClass) {
    const IllFormed rows[] = {
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
    for (const IllFormed& row : rows) {
        for (const std::string before : {"", "\xC3\xA9", "0123456789abcdef0123456789abcdef"}) {
            const auto result = ToUtf16(0x08000100, before + row.bytes);
            EXPECT_EQ(result.status, row.status) << row.what;
            EXPECT_EQ(result.read, before.size()) << row.what;
            EXPECT_EQ(result.text, ToUtf16(0x08000100, before).text) << row.what;
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

/// Expects two functions to do the same with `input`, whatever room there is.
void ExpectSame(TextConversion::ConvertFunction fast, TextConversion::ConvertFunction plain, const std::string& input) {
    const Generated::Exact exact(input);
    const TextConversion::Input bytes(reinterpret_cast<const unsigned char*>(exact.View().data()), input.size());
    const std::size_t most = 3 * input.size();
    for (std::size_t room = 0; room <= most; room = room + 1 + room / 3) {
        const auto fastOutput = std::make_unique<unsigned char[]>(room);
        const auto plainOutput = std::make_unique<unsigned char[]>(room);
        const auto a = fast(bytes, {fastOutput.get(), room});
        const auto b = plain(bytes, {plainOutput.get(), room});
        ASSERT_EQ(std::tie(a.status, a.read, a.written), std::tie(b.status, b.read, b.written)) << room;
        ASSERT_EQ(std::memcmp(fastOutput.get(), plainOutput.get(), a.written), 0) << room;
    }
}

TEST(UnicodeConverters, TheFastUtf8GivesWhatThePlainOneGives) {
    const TextConversion::Utf8Functions fast = TextConversion::FastestUtf8();
    const std::array<std::string, 9> characters{"a",
                                                "\x7F",
                                                "\xC2\x80",
                                                "\xDF\xBF",
                                                "\xE0\xA0\x80",
                                                "\xED\x9F\xBF",
                                                "\xEF\xBF\xBF",
                                                "\xF0\x90\x80\x80",
                                                "\xF4\x8F\xBF\xBF"};
    std::mt19937 random(3);
    for (int round = 0; round < 4000; ++round) {
        std::string text;
        while (text.size() < 100 && random() % 24 != 0) {
            const std::string& character = characters[random() % characters.size()];
            for (std::size_t i = random() % 20; i > 0; --i) {
                text += character;
            }
        }
        auto units = std::string(Converted::AsBytes(ToUtf16(0x08000100, text).text));
        if (round % 2 == 0 && !text.empty()) {
            text[random() % text.size()] = static_cast<char>(random());
            units[random() % units.size()] = static_cast<char>(0xD8 + random() % 8);
        }
        ExpectSame(fast.toUtf16, TextConversion::Plain::Utf8ToUtf16, text);
        ExpectSame(fast.fromUtf16, TextConversion::Plain::Utf16ToUtf8, units);
    }
}

}  // namespace
