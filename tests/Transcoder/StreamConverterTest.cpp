#include <Lum/Transcoder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/Generated.h"

namespace Lum {
void PrintTo(ConversionStatus status, std::ostream* out) { *out << static_cast<int>(status); }
}  // namespace Lum

namespace {

using Lum::ConversionStatus;
using Lum::StreamConverter;

struct Streamed {
    ConversionStatus status;
    std::size_t read;
    std::string text;
};

/// Converts `input` in blocks of random sizes, at most `longest`, as a program that reads a file would.
Streamed Stream(const std::string& from, const std::string& to, const std::string& input, std::size_t longest,
                unsigned seed) {
    std::mt19937 random(seed);
    const auto size = [&] { return random() % longest + 1; };
    StreamConverter converter(from, to);
    Streamed result{ConversionStatus::kDone, 0, ""};
    std::size_t given = 0;
    std::string output;
    const auto take = [&](const Lum::ConversionResult& step) {
        result.read += step.read;
        result.text.append(output, 0, step.written);
        result.status = step.status;
    };
    // Room that never suffices would keep us here: it grows until something happens.
    std::size_t room = size();
    for (;;) {
        output.assign(room, '?');
        const Generated::Exact block(std::string_view(input).substr(result.read, given - result.read));
        const auto step = converter.Convert(block.View(), output);
        take(step);
        if (step.status == ConversionStatus::kOutputFull) {
            room = step.read == 0 && step.written == 0 ? room + 1 : size();
            EXPECT_LE(room, longest + 16);
        } else if ((step.status == ConversionStatus::kDone || step.status == ConversionStatus::kIncomplete) &&
                   given < input.size()) {
            given = std::min(input.size(), given + size());
        } else {
            break;
        }
    }
    for (room = 0; result.status == ConversionStatus::kDone || result.status == ConversionStatus::kOutputFull; ++room) {
        output.assign(room, '?');
        take(converter.Finish(output));
        if (result.status == ConversionStatus::kDone) {
            return result;
        }
    }
    return result;
}

/// UTF-8 text of about `size` bytes with characters of all lengths that `encoding` has.
std::string Sample(const std::string& encoding, std::size_t size) {
    std::string sample;
    std::mt19937 random(1);
    std::vector<std::string> characters;
    for (const char* c :
         {"a", "b", " ", "\n", "+", "~", "é", "ß", "я", "あ", "漢", "字", "ソ", "表", "ｱ", "€", "😀", "𠮷"}) {
        // A failed conversion stops ahead of the "x".
        if (Lum::Transcoder::UTF8ToEncoding(std::string(c) + "x", encoding).ends_with('x')) {
            characters.emplace_back(c);
        }
    }
    while (!characters.empty() && sample.size() < size) {
        sample += characters[random() % characters.size()];
    }
    return sample;
}

TEST(StreamConverter, GivesTheSameHoweverTheBlocksAreCut) {
    for (const std::string from :
         {"utf-8", "utf-16", "iso-8859-1", "utf-16be", "utf-7", "shift_jis", "iso-2022-jp", "gb18030"}) {
        for (const std::string to : {"utf-8", "utf-16", "utf-16le", "utf-7", "shift_jis", "iso-2022-jp", "gb18030"}) {
            // Kept to what both have.
            const std::string sample = Sample(from, 3000);
            std::string text = Sample(to, 3000);
            if (Lum::Transcoder::EncodingToUTF8(Lum::Transcoder::UTF8ToEncoding(text, from), from) != text) {
                text = sample;
                if (Lum::Transcoder::EncodingToUTF8(Lum::Transcoder::UTF8ToEncoding(text, to), to) != text) {
                    text = Sample("us-ascii", 3000);
                }
            }
            const std::string input = Lum::Transcoder::UTF8ToEncoding(text, from);
            const std::string expected = Lum::Transcoder::UTF8ToEncoding(text, to);
            unsigned seed = 0;
            for (const std::size_t longest : {1U, 2U, 3U, 7U, 40U, 20000U}) {
                const Streamed result = Stream(from, to, input, longest, ++seed);
                EXPECT_EQ(result.status, ConversionStatus::kDone) << from << ' ' << to << ' ' << longest;
                EXPECT_EQ(result.read, input.size()) << from << ' ' << to << ' ' << longest;
                EXPECT_EQ(result.text, expected) << from << ' ' << to << ' ' << longest;
            }
        }
    }
}

TEST(StreamConverter, StopsAtTheBadElementWithAllBeforeItWritten) {
    const struct {
        std::string from, to, good, bad;
        ConversionStatus status;
    } rows[] = {
        {"utf-8", "utf-16", "aé", "\xFFz", ConversionStatus::kMalformed},
        {"utf-8", "iso-8859-1", "aé", "\xE2\x82z", ConversionStatus::kMalformed},
        {"utf-8", "iso-8859-1", "aé", "\xE2\x82", ConversionStatus::kIncomplete},
        {"utf-8", "iso-8859-1", "aé", "€z", ConversionStatus::kUnmappable},
        {"iso-8859-1", "us-ascii", "ab", "\xE9z", ConversionStatus::kUnmappable},
        {"utf-8", "shift_jis", "aあ漢", "😀z", ConversionStatus::kUnmappable},
        {"shift_jis", "iso-8859-1", "ab", "\x82\xA0z", ConversionStatus::kUnmappable},
        {"shift_jis", "utf-8", "a\x83\x5C\xB1", "\x81", ConversionStatus::kIncomplete},
        {"iso-2022-jp", "shift_jis", "a\x1B$B$\"4A\x1B(Bb\x1B$B;z", "\x80\x80", ConversionStatus::kMalformed},
        {"iso-2022-jp", "iso-8859-1", "a\x1B$B!_\x1B(Bb\x1B$B", "$\"", ConversionStatus::kUnmappable},
        {"utf-7", "shift_jis", "a+MEJvIltX", "2D3eAAB6-", ConversionStatus::kUnmappable},
    };
    for (const auto& row : rows) {
        // The bad element in the first of the blocks that are held between the converters, and in a later one.
        for (const std::size_t filler : {0U, 3U, 4090U, 9000U}) {
            const std::string good = std::string(filler, 'x') + row.good;
            const std::string expected = Stream(row.from, row.to, good, 9000, 0).text;
            for (const std::size_t longest : {1U, 5U, 100U, 9000U}) {
                const Streamed result = Stream(row.from, row.to, good + row.bad, longest, 7);
                EXPECT_EQ(result.status, row.status) << row.from << ' ' << row.to << ' ' << filler << ' ' << longest;
                EXPECT_EQ(result.read, good.size()) << row.from << ' ' << row.to << ' ' << filler << ' ' << longest;
                EXPECT_TRUE(expected.starts_with(result.text)) << row.from << ' ' << row.to;
            }
        }
    }
}

TEST(StreamConverter, StaysAtABadElementUntilItIsCleared) {
    StreamConverter converter("utf-8", "iso-8859-1");
    std::string output(100, '?');
    for (const char* input : {"ab€", "€", "€uro"}) {
        EXPECT_EQ(converter.Convert(input, output).status, ConversionStatus::kUnmappable);
    }
    EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kUnmappable);
    converter.Clear();
    EXPECT_EQ(converter.Convert("é", output).status, ConversionStatus::kDone);
    EXPECT_EQ(output[0], '\xE9');
    EXPECT_EQ(converter.Finish(output).status, ConversionStatus::kDone);
    EXPECT_EQ(StreamConverter("utf-8", "no such").Convert("a", output).status, ConversionStatus::kNoSuchEncoding);
    EXPECT_EQ(StreamConverter("no such", "utf-16").Finish(output).status, ConversionStatus::kNoSuchEncoding);
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
