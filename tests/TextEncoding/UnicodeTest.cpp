#include "Platform/TextEncoding/TextEncodingConverter.h"

#include <gtest/gtest.h>

#include "tests/TextEncoding/Converted.h"

namespace {

using Converted::FromUtf16;
using Converted::ToUtf16;

struct IllFormed {
    const char* what;
    std::string bytes;
    OSStatus status;
};

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

}  // namespace
