#include <Lum/LossyConversion.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Lum::ConversionStatus;
using namespace std::string_literals;

// That blocks give the same, and UTF-8 what the Unicode standard says, is a property in fuzz/Converters.cpp.
TEST(ConvertLossy, ReplacesEachBadElement) {
    const struct {
        std::string from, to, text, expected, why;
    } rows[] = {
        {"utf-8", "utf-8", "a\xF1\x80\x80\xE1\x80\xC2"s + "b\x80", "a\uFFFD\uFFFD\uFFFDb\uFFFD", "maximal subparts"},
        {"utf-8", "iso-8859-1", "a\xE2\x82\xAC\xF0\x9F\x98\x80z\xFF", "a??z?", "the target has no U+FFFD"},
        {"utf-16be", "utf-8", "\xDC\0\0a\xD8\0"s, "\uFFFDa\uFFFD", "units"},
        {"utf-32be", "us-ascii", "\0\x11\0\0\0\0\0a\0\0"s, "?a?", "four bytes, and what is left"},
        {"shift_jis", "utf-8", "\x81\"\xEF\xFF\x83\x5C", "\uFFFD\"\uFFFDソ", "no ASCII byte is lost"},
        {"gb18030", "utf-8", "\x81\x30\x41\xFF", "\uFFFD0A\uFFFD", "nor in a code of four bytes"},
        {"big5-hkscs", "us-ascii", "a\x88\x62z", "a?z", "a code of two bytes"},
        {"utf-8", "iso-2022-jp", "あ€い", "\x1B$B$\"\x1B(B?\x1B$B$$\x1B(B", "the target's state"},
        {"iso-2022-jp", "iso-8859-1", "\x1B$B$\"!_$$\x1B(Bz", "?\xD7?z", "the source's state"},
        {"utf-7", "shift_jis", "+2D3eAAB6-b", "?zb", "characters that share a byte"},
        {"utf-7", "utf-8", "a+AGEA", "aa\uFFFD", "the start of one more character"},
        {"utf-16be", "utf-7", "\xD8\0\0a"s, "+//0-a", "the replacement in the target's escapes"},
    };
    for (const auto& row : rows) {
        for (const std::size_t filler : {0U, 4090U, 9000U}) {
            const auto blank = Lum::ConvertText(std::string(filler, ' '), "us-ascii", row.from).text;
            const std::string text = Lum::ConvertLossy(blank + row.text, row.from, row.to).text;
            EXPECT_EQ(text, std::string(filler, ' ') + row.expected) << row.why << ' ' << filler;
        }
    }
    EXPECT_EQ(Lum::ConvertLossyToUTF16("a\xFF", "utf-8").text, u"a\uFFFD");
    EXPECT_EQ(Lum::ConvertLossy("\xFF", "utf-8", "no such").status, ConversionStatus::kNoSuchEncoding);
}

TEST(ConvertLossy, AsksTheCaller) {
    std::vector<std::string> asked;
    const auto onBad = [&](const Lum::BadElement& bad) -> std::optional<std::u16string> {
        asked.push_back(std::to_string(bad.offset) + ":" + std::string(bad.bytes));
        return bad.status == ConversionStatus::kMalformed ? std::optional(u"[€\xDC00]"s) : std::nullopt;
    };
    const auto result = Lum::ConvertLossy("a\xFF\xE2\x82z€b", "utf-8", "iso-8859-1", onBad);
    EXPECT_EQ(result.text, "a[??][??]z");
    EXPECT_EQ(std::pair(result.status, result.offset), std::pair(ConversionStatus::kUnmappable, std::size_t{5}));
    EXPECT_EQ(asked, (std::vector{"1:\xFF"s, "2:\xE2\x82"s, "5:€"s}));
    EXPECT_EQ(Lum::ConvertLossyFromUTF16(u"aé€", "iso-8859-1", onBad).offset, 2U);
}

TEST(LossyConverter, StaysWhereItWasEndedAndWhenBytesAreMissing) {
    Lum::LossyConverter ended("utf-8", "utf-16",
                              [](const Lum::BadElement&) { return std::optional<std::u16string>(); });
    std::string output(16, '?');
    for (const char* const input : {"a\xFFz", "\xFFz", "z"}) {
        EXPECT_EQ(ended.Convert(input, output).status, ConversionStatus::kMalformed);
    }
    EXPECT_EQ(ended.Finish("z", output).status, ConversionStatus::kMalformed);
    ended.Clear();
    EXPECT_EQ(ended.Finish("z", output).status, ConversionStatus::kDone);
    EXPECT_EQ(ended.Convert("a\xE3", output).read, 1U);
    EXPECT_EQ(Lum::LossyConverter(std::move(ended)).Finish({}, output).status, ConversionStatus::kIncomplete);
    Lum::LossyConverter cut("utf-8", "utf-8");
    EXPECT_EQ(cut.Convert("a\xE3", output).read, 1U);
    EXPECT_EQ(cut.Finish({}, output).written, 3U) << "what is not given again is replaced as well";
    for (const char* const from : {"utf-8", "shift_jis", "utf-7"}) {
        Lum::LossyConverter converter(from, "us-ascii");
        const std::string text = Lum::ConvertText("ああaああ", "utf-8", from).text;
        EXPECT_EQ(converter.Convert(text, std::span(output).first(1)).status, ConversionStatus::kOutputFull);
        while (converter.Finish({}, output).status == ConversionStatus::kOutputFull) {
        }
    }
}

}  // namespace
