// Every encoding that has a converter: against ICU's own answers, and in pieces against the whole.
#include "Platform/TextEncoding/EncodingNames.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <array>
#include <string>
#include <vector>

#include "tests/TextEncoding/Converted.h"

namespace {

using Converted::Bytes;
using Converted::kUtf16;
using Converted::Make;
using Converted::RunAll;
using TextConversion::EncodingRow;

/// Leaves every error standing; ICU's own callback drops characters that are not seen.
void StopFromUtf16(const void* /*context*/, UConverterFromUnicodeArgs* /*run*/, const char16_t* /*units*/,
                   std::int32_t /*size*/, UChar32 /*scalar*/, UConverterCallbackReason /*reason*/,
                   UErrorCode* /*error*/) {}

/// ICU's converter, made to stop at whatever it cannot convert.
struct IcuOracle {
    explicit IcuOracle(std::string_view name) : converter(ucnv_open(std::string(name).c_str(), &error)) {
        ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
        ucnv_setFromUCallBack(converter, StopFromUtf16, nullptr, nullptr, nullptr, &error);
        EXPECT_TRUE(U_SUCCESS(error)) << name;
    }
    ~IcuOracle() { ucnv_close(converter); }

    static OSStatus Status(UErrorCode code) {
        return code == U_ZERO_ERROR             ? noErr
               : code == U_TRUNCATED_CHAR_FOUND ? kTECPartialCharErr
               : code == U_INVALID_CHAR_FOUND   ? kTECUnmappableElementErr
                                                : kTextMalformedInputErr;
    }
    [[nodiscard]] Bytes ToUtf16(std::string_view text) const {
        ucnv_reset(converter);
        std::array<char16_t, 64> units;
        char16_t* to = units.data();
        const char* from = text.data();
        UErrorCode code = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &to, to + units.size(), &from, from + text.size(), nullptr, 1, &code);
        std::array<char, 32> bad;
        std::int8_t badSize = bad.size();
        UErrorCode ignored = U_ZERO_ERROR;
        ucnv_getInvalidChars(converter, bad.data(), &badSize, &ignored);
        std::size_t taken = static_cast<std::size_t>(from - text.data());
        taken -= U_FAILURE(code) ? static_cast<std::size_t>(badSize) : 0;
        return {Status(code), taken,
                std::string(Converted::AsBytes({units.data(), static_cast<std::size_t>(to - units.data())}))};
    }
    [[nodiscard]] Bytes FromUtf16(std::u16string_view text) const {
        ucnv_reset(converter);
        std::array<char, 64> bytes;
        char* to = bytes.data();
        const char16_t* from = text.data();
        UErrorCode code = U_ZERO_ERROR;
        ucnv_fromUnicode(converter, &to, to + bytes.size(), &from, from + text.size(), nullptr, 1, &code);
        return {Status(code), U_FAILURE(code) ? 0 : text.size() * 2, std::string(bytes.data(), to)};
    }

    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter;
};

bool operator==(const Bytes& a, const Bytes& b) { return a.status == b.status && a.read == b.read && a.text == b.text; }

std::string Shown(const Bytes& result) {
    std::string shown = std::to_string(result.status) + " at " + std::to_string(result.read) + ":";
    for (const char c : result.text) {
        constexpr char digits[] = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(c);
        shown += {' ', digits[byte / 16], digits[byte % 16]};
    }
    return shown;
}

std::vector<EncodingRow> IcuRows() {
    std::vector<EncodingRow> rows;
    for (const EncodingRow& row : TextConversion::EncodingRows()) {
        if (!row.converter.empty()) {
            rows.push_back(row);
        }
    }
    return rows;
}

TEST(Encodings, EveryByteAndBytePairIsWhatIcuSays) {
    for (const EncodingRow& row : IcuRows()) {
        const IcuOracle oracle(row.converter);
        if (const auto type = ucnv_getType(oracle.converter);
            type != UCNV_SBCS && type != UCNV_DBCS && type != UCNV_MBCS) {
            continue;
        }
        const auto converter = Make(row.encoding, kUtf16);
        ASSERT_NE(converter, nullptr) << row.names;
        const bool isDouble = ucnv_getMaxCharSize(oracle.converter) > 1;
        int wrong = 0;
        for (int i = 0; i < (isDouble ? 0x10000 + 256 : 256) && wrong < 3; ++i) {
            std::string text(1, static_cast<char>(i % 256));
            if (i >= 256) {
                text.insert(text.begin(), static_cast<char>(i / 256 - 1));
            }
            const Bytes ours = RunAll(converter.get(), text, 64);
            if (const Bytes theirs = oracle.ToUtf16(text); !(ours == theirs)) {
                ADD_FAILURE() << row.names << std::hex << " " << i << " ours " << Shown(ours) << " ICU's "
                              << Shown(theirs);
                ++wrong;
            }
            TECClearConverterContextInfo(converter.get());
        }
    }
}

TEST(Encodings, UnitsFromEverywhereAreWhatIcuSays) {
    for (const EncodingRow& row : IcuRows()) {
        const IcuOracle oracle(row.converter);
        if (ucnv_getType(oracle.converter) == UCNV_HZ) {
            continue;  // ICU does not end it.
        }
        const auto converter = Make(kUtf16, row.encoding);
        ASSERT_NE(converter, nullptr) << row.names;
        int wrong = 0;
        for (char32_t i = 0; i < 0x30000 && wrong < 3; i += i < 0x180 ? 1 : i < 0x10000 ? 11 : 0x123) {
            std::u16string text(1, static_cast<char16_t>(i));
            if ((i & 0xFFFFF800) == 0xD800) {
                continue;
            }
            if (i >= 0x10000) {
                text = {static_cast<char16_t>(0xD7C0 + (i >> 10)), static_cast<char16_t>(0xDC00 | (i & 0x3FF))};
            }
            const Bytes ours = RunAll(converter.get(), Converted::AsBytes(text), 64);
            if (const Bytes theirs = oracle.FromUtf16(text); !(ours == theirs)) {
                ADD_FAILURE() << row.names << std::hex << " " << static_cast<std::uint32_t>(i) << " ours "
                              << Shown(ours) << " ICU's " << Shown(theirs);
                ++wrong;
            }
            TECClearConverterContextInfo(converter.get());
        }
    }
}

/// The characters of a mixed text that an encoding has.
std::u16string SampleFor(TextEncoding encoding) {
    const std::u16string pool =
        u"ab\\|~Zz\r\n é\u00CA\u0304ß\u00CA§±Привет κόσμε שלום مرحبا 日本語カタカナ ﾊﾝｶｸ表\u301C漢字仮名 中文測試简体 "
        u"한국어 "
        u"\U0001F600\U00020000\uFFFD\uFEFFx ก็ +-~{~} &";
    std::u16string sample;
    const auto converter = Make(kUtf16, encoding);
    for (std::size_t i = 0; i < pool.size();) {
        const std::size_t size = (pool[i] & 0xFC00) == 0xD800 ? 2 : 1;
        if (RunAll(converter.get(), Converted::AsBytes(pool.substr(i, size))).status == noErr) {
            sample += pool.substr(i, size);
        }
        TECClearConverterContextInfo(converter.get());
        i += size;
    }
    return sample + sample;
}

std::vector<TextEncoding> AllEncodings() {
    std::vector<TextEncoding> encodings;
    for (const EncodingRow& row : TextConversion::EncodingRows()) {
        if (Make(row.encoding, kUtf16) != nullptr) {
            encodings.push_back(row.encoding);
        }
    }
    return encodings;
}

/// Expects `text`, alone and with each of `bad` behind it, to give in pieces what it gives as a whole.
void ExpectPiecesLikeWhole(TextEncoding from, TextEncoding to, const std::string& text,
                           const std::vector<std::string>& bad) {
    const auto converter = Make(from, to);
    for (const std::string& behind : bad) {
        const std::string input = text + behind + (behind.empty() ? "" : text.substr(0, 8));
        const Bytes whole = RunAll(converter.get(), input);
        TECClearConverterContextInfo(converter.get());
        for (const std::size_t step : {1U, 2U, 5U, 64U}) {
            for (const std::size_t room : {16U, 17U, 18U, 19U, 23U, 40U, 101U}) {
                const Bytes pieces = RunAll(converter.get(), input, room, step);
                TECClearConverterContextInfo(converter.get());
                ASSERT_TRUE(pieces == whole)
                    << std::hex << from << " to " << to << std::dec << " step " << step << " room " << room << "\n"
                    << Shown(pieces) << "\n"
                    << Shown(whole);
            }
        }
    }
}

TEST(Encodings, TheFlushReturnsToTheInitialState) {
    struct Row {
        TextEncoding encoding;
        const char* bytes;
    };
    for (const Row& row : {Row{0x0820, "\x1B$BF|\x1B(B"}, Row{0x0840, "\x1B$)C\x0Elm\x0F"},
                           Row{0x0830, "\x1B$)A\x0EHU\x0F"}, Row{0x0A05, "~{HU~}"}, Row{0x04000100, "+ZeU-"}}) {
        const auto converter = Make(kUtf16, row.encoding);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(RunAll(converter.get(), Converted::AsBytes(u"日")).text, row.bytes);
            EXPECT_EQ(RunAll(converter.get(), "").text, "") << "an empty text needs no header";
        }
        // The clearing does so without a word, also after a failure.
        EXPECT_EQ(RunAll(converter.get(), Converted::AsBytes(u"日\xDC00")).status, kTextMalformedInputErr);
        TECClearConverterContextInfo(converter.get());
        EXPECT_EQ(RunAll(converter.get(), Converted::AsBytes(u"日")).text, row.bytes);
    }
}

TEST(Encodings, TextsInPiecesGiveWhatTheyGiveAsAWhole) {
    for (const TextEncoding encoding : AllEncodings()) {
        const std::string sample(Converted::AsBytes(SampleFor(encoding)));
        ExpectPiecesLikeWhole(kUtf16, encoding, sample,
                              {"", std::string("\0\xDC", 2), std::string("\0\xD8", 2), "\xFF\xFF", "z"});
        const Bytes encoded = RunAll(Make(kUtf16, encoding).get(), sample);
        EXPECT_EQ(encoded.status, noErr) << std::hex << encoding;
        const Bytes decoded = RunAll(Make(encoding, kUtf16).get(), encoded.text);
        EXPECT_EQ(Shown(decoded), Shown({noErr, encoded.text.size(), sample})) << std::hex << encoding;
        ExpectPiecesLikeWhole(encoding, kUtf16, encoded.text,
                              {"", "\xFF\xFF", "\x1B", "\x1B$", "\x81", "+2D0-", "+AG", "~", "~{!", "\x80"});
    }
}

}  // namespace
