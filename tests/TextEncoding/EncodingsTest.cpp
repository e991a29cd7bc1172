// The encodings whose tables are ICU's: what is our own between the services and ICU.
#include "Platform/TextEncoding/EncodingNames.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <tuple>
#include <utility>
#include <vector>

#include "Platform/TextEncoding/IcuDirections.h"
#include "Source/Base/Cpu.h"
#include "tests/TextEncoding/Converted.h"

namespace {

using Converted::Bytes;
using Converted::kUtf16;
using Converted::OwnedConverter;
using Converted::RunAll;
using namespace Lum::Internal;
using namespace Lum::Internal::TextConversion;

/// What ICU alone gives for a whole text, in an encoding that keeps no state.
template <class Direction>
Bytes ByIcu(UConverter* icu, std::string_view text) {
    std::vector<typename Direction::From> from(text.size() / sizeof(typename Direction::From));
    std::vector<typename Direction::To> to(4 * text.size() + 8);
    std::copy_n(text.data(), from.size() * sizeof from[0], reinterpret_cast<char*>(from.data()));
    UErrorCode error = U_ZERO_ERROR;
    Direction::Prepare(icu, error);
    Direction::Reset(icu);
    typename Direction::Run run{from.data(), from.data() + Direction::WithoutHalfPair(from).size(), to.data(),
                                to.data() + to.size(), nullptr};
    Direction::Convert(icu, run, false, error);
    const OSStatus fault = StatusOf(error);
    const std::size_t open = fault != noErr ? Direction::FaultSize(icu) : Direction::Held(icu);
    const std::size_t read = (static_cast<std::size_t>(run.from - from.data()) - open) * sizeof from[0];
    if (read == text.size()) {
        Direction::Convert(icu, run, true, error);
    }
    return {fault != noErr || read == text.size() ? fault : kTECPartialCharErr, read,
            std::string(reinterpret_cast<const char*>(to.data()), reinterpret_cast<const char*>(run.to))};
}

TEST(Encodings, TakeUnitsAtAnyAddress) {
    for (const EncodingRow& row : EncodingRows()) {
        const OwnedConverter encoder(kUtf16, row.encoding);
        if (!encoder) {
            continue;
        }
        alignas(char16_t) std::array<unsigned char, 9> input{};
        std::array<Bytes, 2> results;
        for (const std::size_t shift : {0U, 1U}) {
            std::memcpy(input.data() + shift, u"abcd", 8);
            std::array<unsigned char, 64> output{};
            const Step step = encoder.Convert({input.data() + shift, 8}, output);
            results[shift] = {step.status, step.read, std::string(output.begin(), output.end())};
            encoder.Clear();
        }
        EXPECT_EQ(results[0], results[1]) << row.names;
    }
}

TEST(Encodings, EveryTextIsWhatIcuSaysHoweverItIsCut) {
    std::mt19937 random(7);
    const CpuTier best = UsedCpu();
    for (const EncodingRow& row : EncodingRows()) {
        UErrorCode error = row.converter.empty() ? U_ILLEGAL_ARGUMENT_ERROR : U_ZERO_ERROR;
        const IcuHandle icu(ucnv_open(std::string(row.converter).c_str(), &error));
        const auto type = icu ? ucnv_getType(icu.get()) : UCNV_UNSUPPORTED_CONVERTER;
        if (type != UCNV_SBCS && type != UCNV_DBCS && type != UCNV_MBCS) {
            continue;
        }
        const OwnedConverter decoder(row.encoding, kUtf16), encoder(kUtf16, row.encoding);
        const auto expect = [&](bool isToUtf16, const std::string& text) {
            const Bytes whole = isToUtf16 ? ByIcu<IcuToUtf16>(icu.get(), text) : ByIcu<IcuFromUtf16>(icu.get(), text);
            for (const bool isCut : {false, true}) {
                const OwnedConverter& converter = isToUtf16 ? decoder : encoder;
                converter.Clear();
                const Bytes all = isCut ? RunAll(converter, text, 16 + random() % 60, 1 + random() % 50)
                                        : RunAll(converter, text, 4 * text.size() + 16);
                EXPECT_EQ(all, whole) << row.names << ", to UTF-16: " << isToUtf16;
            }
        };
        // Characters of every kind, some of which the encoding has.
        std::u16string units = u"az~\\\x7F\x80\u00E9\u00A5\u20AC\u042F\u3042\u3042\uFF71\u6F22\uAC00\uE000\uFFFD";
        for (int i = 0; i < 20; ++i) {
            units += static_cast<char16_t>(random());
        }
        std::vector<std::string> pieces[2] = {{std::string(Converted::AsBytes(u"\U0001F600"))}, {}};
        for (const char16_t& unit : units) {
            pieces[0].emplace_back(Converted::AsBytes({&unit, 1}));
        }
        for (const std::string& piece : pieces[0]) {
            encoder.Clear();
            pieces[1].push_back(RunAll(encoder, piece).text);  // nothing, if the encoding does not have it
        }
        for (int i = 0; i < 256; ++i) {
            const std::string byte(1, static_cast<char>(i));
            expect(true, byte);
            if (type == UCNV_SBCS) {
                pieces[1].push_back(byte);
            }
        }
        for (int round = 0; round < 200; ++round) {
            ForceCpu(round % 4 < 2 ? CpuTier::kPlain : best);
            const bool isToUtf16 = round % 2 != 0;
            std::string text;
            while (text.size() < 1000 && random() % 32 != 0) {
                const std::string& piece = pieces[isToUtf16][random() % pieces[isToUtf16].size()];
                for (std::size_t count = 1 + random() % (random() % 2 == 0 ? 2 : 40); count != 0; --count) {
                    text += piece;
                }
            }
            if (round % 3 == 0 && !text.empty()) {
                text[random() % text.size()] = static_cast<char>(random());
                text.resize(random() % (text.size() + 1));
            }
            expect(isToUtf16, text);
        }
        ForceCpu(best);
    }
}

TEST(Encodings, NothingIsSubstitutedAndNothingIsDropped) {
    const std::tuple<TextEncoding, std::u16string, Bytes> rows[] = {
        {0x0A01, u"a\u65E5\uFF71", {noErr, 6, "a\x93\xFA\xB1"}},
        {0x0A01, u"a\u00E9", {kTECUnmappableElementErr, 2, "a"}},
        {0x0A01, u"a\u00AD", {kTECUnmappableElementErr, 2, "a"}},  // invisible
        {0x0A01, u"\uFEFF", {kTECUnmappableElementErr, 0, ""}},
        {0x0A01, u"\u00A5", {kTECUnmappableElementErr, 0, ""}},  // ICU's fallback is a backslash
        {0x0202, u"a\U0001F600", {kTECUnmappableElementErr, 2, "a"}},
        {0x0632, u"\U0001F600", {noErr, 4, "\x94\x39\xFC\x36"}},
        {0x0500, u"\u20AC\u3042", {kTECUnmappableElementErr, 2, "\x80"}},
        {0x0820, u"a\u65E5", {noErr, 4, "a\x1B$BF|\x1B(B"}},
    };
    for (const auto& [encoding, units, expected] : rows) {
        EXPECT_EQ(Converted::FromUtf16(encoding, units), expected) << encoding;
    }
}

TEST(Encodings, TheFlushReturnsToTheInitialState) {
    for (const auto& [encoding, bytes] :
         std::vector<std::pair<TextEncoding, const char*>>{{0x0820, "\x1B$BF|\x1B(B"},
                                                           {0x0840, "\x1B$)C\x0Elm\x0F"},
                                                           {0x0830, "\x1B$)A\x0EHU\x0F"},
                                                           {0x0A05, "~{HU~}"},
                                                           {0x04000100, "+ZeU-"}}) {
        const OwnedConverter converter(kUtf16, encoding);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(RunAll(converter, Converted::AsBytes(u"日")).text, bytes);
            EXPECT_EQ(RunAll(converter, "").text, "") << "an empty text needs no header";
        }
        // So does Clear, which writes nothing, also after a failure.
        EXPECT_EQ(RunAll(converter, Converted::AsBytes(u"日\xDC00")).status, kTextMalformedInputErr);
        converter.Clear();
        EXPECT_EQ(RunAll(converter, Converted::AsBytes(u"日")).text, bytes);
    }
}

TEST(Encodings, EveryShortTextInUtf7StopsAtOnePositionHoweverItIsCut) {
    const OwnedConverter converter(0x04000100, kUtf16);
    Generated::EveryText("aAE2+-\x1B", 4, [&](const std::string& text) {
        const Bytes whole = RunAll(converter, text);
        for (const std::size_t step : {1U, 2U, 5U}) {
            for (const std::size_t space : {16U, 17U, 19U, 40U}) {
                converter.Clear();
                EXPECT_EQ(RunAll(converter, text, space, step), whole) << text << ' ' << step << ' ' << space;
            }
        }
        converter.Clear();
    });
    EXPECT_EQ(Converted::ToUtf16(0x04000100, "a+2D0-b").status, kTextMalformedInputErr) << "an unpaired surrogate";
    // Two bits of the third "E" belong to the next character, and are no fault of the first one.
    EXPECT_EQ(Converted::ToUtf16(0x04000100, "a+AEE\x1B").read, 5U);
    EXPECT_EQ(Converted::ToUtf16(0x04000100, "a+A\x1B").read, 2U);
}

}  // namespace
