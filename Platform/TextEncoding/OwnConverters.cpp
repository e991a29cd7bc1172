// The converters that have code of their own, and the choice between them. UTF-16 and Latin are here; UTF-8,
// for which there are several variants, is chosen by Utf8.h.
//
// Long texts go in blocks of sixteen characters, of which the compiler makes vectors. What does not fit a
// block goes character by character.
#include <bit>

#include "Platform/TextEncoding/Converter.h"
#include "Source/Utf8/Cursor.h"
#include "Source/Utf8/Utf8.h"

using namespace Lum::Internal;

namespace Lum::Internal::TextConversion {

namespace {

// ---- Latin-1 and ASCII: the characters below `Limit`, which is 0x100 or 0x80 ---------------------

constexpr std::size_t kCharactersInBlock = 16;

/// Converts whole blocks, up to the first that has a character from `Limit` on.
template <std::uint32_t Limit>
void SkimLatinToUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= kCharactersInBlock && cursor.Space() >= 2 * kCharactersInBlock) {
        std::uint32_t all = 0;
        for (std::size_t i = 0; i < kCharactersInBlock; ++i) {
            all |= cursor.from[i];
        }
        if (all >= Limit) {
            return;
        }
        for (std::size_t i = 0; i < kCharactersInBlock; ++i) {
            StoreUnit(cursor.to + 2 * i, cursor.from[i]);
        }
        cursor.Advance(kCharactersInBlock, 2 * kCharactersInBlock);
    }
}

template <std::uint32_t Limit>
void SkimLatinFromUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= 2 * kCharactersInBlock && cursor.Space() >= kCharactersInBlock) {
        std::uint16_t units[kCharactersInBlock];
        std::memcpy(units, cursor.from, sizeof units);
        std::uint16_t all = 0;
        for (const std::uint16_t unit : units) {
            all = static_cast<std::uint16_t>(all | unit);
        }
        if (all >= Limit) {
            return;
        }
        for (std::size_t i = 0; i < kCharactersInBlock; ++i) {
            cursor.to[i] = static_cast<unsigned char>(units[i]);
        }
        cursor.Advance(2 * kCharactersInBlock, kCharactersInBlock);
    }
}

/// A byte from `Limit` on is malformed.
template <std::uint32_t Limit>
Progress LatinToUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimLatinToUtf16<Limit>(cursor); cursor.from != cursor.fromEnd; cursor.Advance(1, 2)) {
        if (*cursor.from >= Limit) {
            return cursor.Stop(Ending::kMalformed, input, output);
        }
        if (cursor.Space() < 2) {
            return cursor.Stop(Ending::kOutputFull, input, output);
        }
        StoreUnit(cursor.to, *cursor.from);
    }
    return cursor.Stop(Ending::kDone, input, output);
}

template <std::uint32_t Limit>
Progress Utf16ToLatin(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimLatinFromUtf16<Limit>(cursor); cursor.from != cursor.fromEnd; cursor.Advance(2, 1)) {
        if (const Ending fault = Utf16Fault(cursor.from, cursor.fromEnd); fault != Ending::kDone) {
            return cursor.Stop(fault, input, output);
        }
        const std::uint32_t unit = LoadUnit(cursor.from);
        if (unit >= Limit) {
            return cursor.Stop(Ending::kUnmappable, input, output);
        }
        if (cursor.Space() < 1) {
            return cursor.Stop(Ending::kOutputFull, input, output);
        }
        *cursor.to = static_cast<unsigned char>(unit);
    }
    return cursor.Stop(Ending::kDone, input, output);
}

// ---- UTF-16: checked, and with its bytes swapped where the order is not the host's ---------------

template <bool IsSwapped>
constexpr std::uint32_t InOrder(std::uint32_t unit) noexcept {
    return IsSwapped ? (unit & 0xFF) << 8 | unit >> 8 : unit;
}

/// Copies whole blocks, up to the first that has a surrogate.
template <bool SwapsInput, bool SwapsOutput>
void SkimUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= 2 * kCharactersInBlock && cursor.Space() >= 2 * kCharactersInBlock) {
        std::uint32_t surrogates = 0;
        for (std::size_t i = 0; i < kCharactersInBlock; ++i) {
            const std::uint32_t unit = InOrder<SwapsInput>(LoadUnit(cursor.from + 2 * i));
            surrogates |= static_cast<std::uint32_t>((unit & 0xF800) == 0xD800);
        }
        if (surrogates != 0) {
            return;
        }
        for (std::size_t i = 0; i < kCharactersInBlock; ++i) {
            StoreUnit(cursor.to + 2 * i, InOrder<SwapsInput != SwapsOutput>(LoadUnit(cursor.from + 2 * i)));
        }
        cursor.Advance(2 * kCharactersInBlock, 2 * kCharactersInBlock);
    }
}

/// Swaps the bytes of the input, of the output, or of neither.
template <bool SwapsInput, bool SwapsOutput>
Progress CopyUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimUtf16<SwapsInput, SwapsOutput>(cursor); cursor.from != cursor.fromEnd;) {
        unsigned char element[4];
        const std::size_t available = cursor.Left() < 4 ? cursor.Left() : 4;
        std::memcpy(element, cursor.from, available);
        for (std::size_t i = 0; i + 2 <= available; i += 2) {
            StoreUnit(element + i, InOrder<SwapsInput>(LoadUnit(element + i)));
        }
        if (const Ending fault = Utf16Fault(element, element + available); fault != Ending::kDone) {
            return cursor.Stop(fault, input, output);
        }
        const std::size_t size = IsLeadSurrogate(LoadUnit(element)) ? 4 : 2;
        if (cursor.Space() < size) {
            return cursor.Stop(Ending::kOutputFull, input, output);
        }
        for (std::size_t i = 0; i < size; i += 2) {
            StoreUnit(cursor.to + i, InOrder<SwapsOutput>(LoadUnit(element + i)));
        }
        cursor.Advance(size, size);
    }
    return cursor.Stop(Ending::kDone, input, output);
}

// ---- The choice ----------------------------------------------------------------------------------

Step StepOf(const Progress& progress) noexcept {
    // By Ending.
    constexpr OSStatus kStatuses[] = {noErr, kTECOutputBufferFullStatus, kTextMalformedInputErr, kTECPartialCharErr,
                                      kTECUnmappableElementErr};
    return {kStatuses[static_cast<std::size_t>(progress.ending)], progress.read, progress.written};
}

/// None of these encodings has a shift state.
class StatelessConverter final : public Converter {
public:
    explicit StatelessConverter(ConvertFunction function) noexcept : m_Function(function) {}

    Step Convert(Input input, Output output) override { return StepOf(m_Function(input, output)); }
    Step Flush(Output /*output*/) override { return {noErr, 0, 0}; }
    void Clear() override {}

private:
    ConvertFunction m_Function;
};

constexpr TextEncoding Unicode(TextEncodingFormat format) {
    return CreateTextEncoding(kTextEncodingUnicodeDefault, kTextEncodingDefaultVariant, format);
}

constexpr TextEncoding kUtf8 = Unicode(kUnicodeUTF8Format);
constexpr TextEncoding kUtf16 = Unicode(kUnicode16BitFormat);
constexpr TextEncoding kSwappedUtf16 =
    Unicode(std::endian::native == std::endian::little ? kUnicodeUTF16BEFormat : kUnicodeUTF16LEFormat);
constexpr TextEncoding kNamedHostUtf16 =
    Unicode(std::endian::native == std::endian::little ? kUnicodeUTF16LEFormat : kUnicodeUTF16BEFormat);

struct OwnEncoding {
    TextEncoding encoding;
    ConvertFunction toUtf16;
    ConvertFunction fromUtf16;
};

constexpr OwnEncoding kOwnEncodings[] = {
    {kUtf16, CopyUtf16<false, false>, CopyUtf16<false, false>},
    {kNamedHostUtf16, CopyUtf16<false, false>, CopyUtf16<false, false>},
    {kSwappedUtf16, CopyUtf16<true, false>, CopyUtf16<false, true>},
    {kTextEncodingISOLatin1, LatinToUtf16<0x100>, Utf16ToLatin<0x100>},
    {kTextEncodingUS_ASCII, LatinToUtf16<0x80>, Utf16ToLatin<0x80>},
};

OwnEncoding FindOwnEncoding(TextEncoding encoding) {
    if (encoding == kUtf8) {
        const Utf8Functions functions = FastestUtf8();
        return {kUtf8, functions.toUtf16, functions.fromUtf16};
    }
    for (const OwnEncoding& own : kOwnEncodings) {
        if (own.encoding == encoding) {
            return own;
        }
    }
    return {encoding, nullptr, nullptr};
}

}  // namespace

std::unique_ptr<Converter> MakeOwnConverter(TextEncoding from, TextEncoding to) {
    ConvertFunction function = nullptr;
    if (to == kUtf16) {
        function = FindOwnEncoding(from).toUtf16;
    } else if (from == kUtf16) {
        function = FindOwnEncoding(to).fromUtf16;
    }
    return function != nullptr ? std::make_unique<StatelessConverter>(function) : nullptr;
}

}  // namespace Lum::Internal::TextConversion
