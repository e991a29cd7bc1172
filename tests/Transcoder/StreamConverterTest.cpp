#include <Lum/Transcoder.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

namespace {

using Lum::ConversionStatus;
using Lum::StreamConverter;

// That a StreamConverter does the same, however the text is cut, is a property in fuzz/Converters.cpp.
TEST(ConvertText, StopsAtTheBadElementWithAllBeforeItWritten) {
    const std::tuple<std::string, std::string, std::string, std::string, ConversionStatus> rows[] = {
        {"utf-8", "utf-16", "aé", "\xFFz", ConversionStatus::kMalformed},
        {"utf-8", "iso-8859-1", "aé", "\xE2\x82z", ConversionStatus::kMalformed},
        {"utf-8", "iso-8859-1", "aé", "\xE2\x82", ConversionStatus::kIncomplete},
        {"utf-8", "iso-8859-1", "aÿ", "Āz", ConversionStatus::kUnmappable},
        {"iso-8859-1", "us-ascii", "a\x7F", "\x80z", ConversionStatus::kUnmappable},
        {"utf-8", "shift_jis", "aあ漢", "😀z", ConversionStatus::kUnmappable},
        {"shift_jis", "iso-8859-1", "ab", "\x82\xA0z", ConversionStatus::kUnmappable},
        {"shift_jis", "utf-8", "a\x83\x5C\xB1", "\x81", ConversionStatus::kIncomplete},
        {"iso-2022-jp", "shift_jis", "a\x1B$B$\"4A\x1B(Bb\x1B$B;z", "\x80\x80", ConversionStatus::kMalformed},
        {"iso-2022-jp", "iso-8859-1", "a\x1B$B!_\x1B(Bb\x1B$B", "$\"", ConversionStatus::kUnmappable},
        {"utf-7", "shift_jis", "a+MEJvIltX", "2D3eAAB6-", ConversionStatus::kUnmappable},
    };
    for (const auto& [from, to, before, bad, status] : rows) {
        // The bad element in the first of the blocks between the two converters, and in a later one.
        for (const std::size_t filler : {0U, 3U, 4090U, 9000U}) {
            const std::string good = std::string(filler, 'x') + before;
            const auto whole = Lum::ConvertText(good + bad, from, to);
            EXPECT_EQ(std::pair(whole.status, whole.offset), std::pair(status, good.size()))
                << from << ' ' << to << ' ' << filler;
            EXPECT_TRUE(Lum::ConvertText(good, from, to).text.starts_with(whole.text)) << from;
        }
    }
}

TEST(ConvertText, CountsUnitsWhereTheInputIsUnits) {
    for (const std::size_t filler : {0U, 5000U}) {
        const auto price = Lum::ConvertTextFromUTF16(std::u16string(filler, u'x') + u"aé€z", "iso-8859-1");
        EXPECT_EQ(price.status, ConversionStatus::kUnmappable);
        EXPECT_EQ(price.offset, filler + 2);
        EXPECT_EQ(price.text, std::string(filler, 'x') + "a\xE9");
    }
    EXPECT_EQ(Lum::ConvertTextFromUTF16(u"\xDC00", "utf-8").status, ConversionStatus::kMalformed);
    EXPECT_EQ(Lum::ConvertTextFromUTF16(u"a\xD800", "utf-8").status, ConversionStatus::kIncomplete);
}

TEST(StreamConverter, StaysAtABadElementUntilItIsCleared) {
    StreamConverter converter("utf-8", "iso-8859-1");
    std::string output(100, '?');
    for (const char* input : {"ab€", "€", "€uro"}) {
        EXPECT_EQ(converter.Convert(input, output).status, ConversionStatus::kUnmappable);
    }
    EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kUnmappable);
    StreamConverter moved(std::move(converter));
    moved.Clear();
    converter = std::move(moved);
    EXPECT_EQ(converter.Convert("é", output).status, ConversionStatus::kDone);
    EXPECT_EQ(output[0], '\xE9');
    EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kDone);
    EXPECT_EQ(StreamConverter("utf-8", "no such").Convert("a", output).status, ConversionStatus::kNoSuchEncoding);
    for (const char* const input : {"", "ab", "a\xFF"}) {
        EXPECT_EQ(Lum::ConvertText(input, "utf-8", "no such").status, ConversionStatus::kNoSuchEncoding) << input;
        EXPECT_EQ(Lum::ConvertText(input, "no such", "utf-16").status, ConversionStatus::kNoSuchEncoding) << input;
    }
    EXPECT_EQ(StreamConverter("no such", "utf-16").Finish(output).status, ConversionStatus::kNoSuchEncoding);
}

TEST(StreamConverter, DoesNotFinishATextWhoseEndIsNotConverted) {
    for (const auto& [from, to] : {std::pair("utf-8", "utf-16"), {"utf-8", "utf-16be"}, {"shift_jis", "utf-16"}}) {
        StreamConverter converter(from, to);
        std::string output(2, '?');
        EXPECT_EQ(converter.Convert("ab", output).status, ConversionStatus::kOutputFull) << from;
        EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kIncomplete) << from;
        EXPECT_EQ(converter.Convert("b\xE3", output).status, ConversionStatus::kIncomplete) << from;
        EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kIncomplete) << from;
        converter.Clear();
        EXPECT_EQ(converter.Convert("b", output).status, ConversionStatus::kDone) << from;
        EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kDone) << from;
    }
}

TEST(StreamConverter, StaysInBoundsWhereTheUnreadBytesAreNotGivenAgain) {
    StreamConverter converter("shift_jis", "utf-8");
    std::string output(4, '?');
    EXPECT_EQ(converter.Convert(std::string(1000, 'x'), output).status, ConversionStatus::kOutputFull);
    EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kIncomplete);
    output.resize(5000);
    EXPECT_LE(converter.Convert("ab", output).read, 2U);
    EXPECT_EQ(converter.Convert({}, output).read, 0U);
}

}  // namespace
