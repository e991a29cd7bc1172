// UTF-8 to and from UTF-16 in blocks of sixteen bytes with SSSE3.
//
// Text comes in runs: of ASCII, of characters of two bytes, of three, of four. Each step takes a block
// as if it were all of the kind that it begins with, converts that, and counts how many characters it
// was right about; what it wrote behind them is written over. Where a step gets nowhere, and for the
// last stretch of input or room, the plain code goes on.
#pragma once

#include <tmmintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Platform/TextEncoding/Utf8Plain.h"

namespace TextConversion::Ssse3 {

inline bool IsSupported() noexcept {
    // Static initialisers may come here before the compiler's own has looked at the processor.
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0;
}

/// What a step may read and write, whatever it then counts.
constexpr std::size_t kBlock = 16;
constexpr std::size_t kStepRoom = 32;

inline __m128i Load(const unsigned char* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
inline void Store(unsigned char* to, __m128i block) noexcept {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), block);
}
inline __m128i Units(std::uint32_t unit) noexcept { return _mm_set1_epi16(static_cast<short>(unit)); }
inline __m128i Words(std::uint32_t word) noexcept { return _mm_set1_epi32(static_cast<int>(word)); }

/// Lane for lane, the bits of `mask`, shifted up or, where `up` is negative, down.
inline __m128i UnitField(__m128i lanes, std::uint32_t mask, int up) noexcept {
    const __m128i field = _mm_and_si128(lanes, Units(mask));
    return up < 0 ? _mm_srli_epi16(field, -up) : _mm_slli_epi16(field, up);
}
inline __m128i WordField(__m128i lanes, std::uint32_t mask, int up) noexcept {
    const __m128i field = _mm_and_si128(lanes, Words(mask));
    return up < 0 ? _mm_srli_epi32(field, -up) : _mm_slli_epi32(field, up);
}
inline __m128i HasUnitBits(__m128i lanes, std::uint32_t mask, std::uint32_t bits) noexcept {
    return _mm_cmpeq_epi16(_mm_and_si128(lanes, Units(mask)), Units(bits));
}
inline __m128i HasWordBits(__m128i lanes, std::uint32_t mask, std::uint32_t bits) noexcept {
    return _mm_cmpeq_epi32(_mm_and_si128(lanes, Words(mask)), Words(bits));
}

/// How many bytes from the first on are set in `lanes`, in which each lane is all ones or 0.
inline std::size_t CountLeading(__m128i lanes) noexcept {
    return static_cast<std::size_t>(std::countr_one(static_cast<std::uint32_t>(_mm_movemask_epi8(lanes))));
}

/// Whether units of three bytes, or units made from them, are none: below 800 or surrogates.
inline __m128i IsNoThreeByteUnit(__m128i units) noexcept {
    return _mm_or_si128(HasUnitBits(units, 0xF800, 0), HasUnitBits(units, 0xF800, 0xD800));
}

// Each of the following converts one block and returns how many of its bytes were of the kind.

inline std::size_t AsciiToUtf16(__m128i bytes, unsigned char* to) noexcept {
    Store(to, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    Store(to + 16, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
    const auto others = static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
    return static_cast<std::size_t>(std::countr_zero(others | 1U << kBlock));
}

inline std::size_t TwoBytesToUtf16(__m128i bytes, unsigned char* to) noexcept {
    Store(to, _mm_or_si128(UnitField(bytes, 0x001F, 6), UnitField(bytes, 0x3F00, -8)));
    const __m128i isOverlong = HasUnitBits(bytes, 0x001E, 0);
    return CountLeading(_mm_andnot_si128(isOverlong, HasUnitBits(bytes, 0xC0E0, 0x80C0)));
}

/// Five characters, or fifteen bytes.
__attribute__((target("ssse3"))) inline std::size_t ThreeBytesToUtf16(__m128i bytes, unsigned char* to) noexcept {
    // A lane for each character: the second byte with the first above it, and the third.
    const __m128i firstTwo =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(1, 0, 4, 3, 7, 6, 10, 9, 13, 12, -1, -1, -1, -1, -1, -1));
    const __m128i third =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(2, -1, 5, -1, 8, -1, 11, -1, 14, -1, -1, -1, -1, -1, -1, -1));
    const __m128i units = _mm_or_si128(_mm_or_si128(UnitField(firstTwo, 0x0F00, 4), UnitField(firstTwo, 0x003F, 6)),
                                       UnitField(third, 0x003F, 0));
    Store(to, units);
    const __m128i isForm = _mm_and_si128(HasUnitBits(firstTwo, 0xF0C0, 0xE080), HasUnitBits(third, 0x00C0, 0x0080));
    return CountLeading(_mm_andnot_si128(IsNoThreeByteUnit(units), isForm)) / 2 * 3;
}

inline std::size_t FourBytesToUtf16(__m128i bytes, unsigned char* to) noexcept {
    const __m128i scalars = _mm_or_si128(
        _mm_or_si128(WordField(bytes, 0x07, 18), WordField(bytes, 0x3F00, 12 - 8)),
        _mm_or_si128(WordField(bytes, 0x3F0000, 6 - 16), _mm_srli_epi32(WordField(bytes, 0x3F000000, 0), 24)));
    const __m128i lead = _mm_add_epi32(_mm_srli_epi32(scalars, 10), Words(0xD7C0));
    const __m128i trail = _mm_or_si128(WordField(scalars, 0x3FF, 16), Words(0xDC000000));
    Store(to, _mm_or_si128(lead, trail));
    const __m128i isInRange =
        _mm_and_si128(_mm_cmpgt_epi32(scalars, Words(0xFFFF)), _mm_cmplt_epi32(scalars, Words(0x110000)));
    return CountLeading(_mm_and_si128(isInRange, HasWordBits(bytes, 0xC0C0C0F8, 0x808080F0)));
}

inline std::size_t AsciiFromUtf16(__m128i units, unsigned char* to) noexcept {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(units, units));
    return CountLeading(HasUnitBits(units, 0xFF80, 0));
}

inline std::size_t TwoBytesFromUtf16(__m128i units, unsigned char* to) noexcept {
    Store(to, _mm_or_si128(_mm_or_si128(UnitField(units, 0x07C0, -6), UnitField(units, 0x003F, 8)), Units(0x80C0)));
    const __m128i isAscii = HasUnitBits(units, 0xFF80, 0);
    return CountLeading(_mm_andnot_si128(isAscii, HasUnitBits(units, 0xF800, 0)));
}

__attribute__((target("ssse3"))) inline std::size_t ThreeBytesFromUtf16(__m128i units, unsigned char* to) noexcept {
    const __m128i firstTwo =
        _mm_or_si128(_mm_or_si128(UnitField(units, 0xF000, -12), UnitField(units, 0x0FC0, 8 - 6)), Units(0x80E0));
    const __m128i third = _mm_or_si128(UnitField(units, 0x003F, 0), Units(0x0080));
    // Four bytes for each character, of which the last goes.
    const __m128i close = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    Store(to, _mm_shuffle_epi8(_mm_unpacklo_epi16(firstTwo, third), close));
    Store(to + 12, _mm_shuffle_epi8(_mm_unpackhi_epi16(firstTwo, third), close));
    return static_cast<std::size_t>(
        std::countr_zero(static_cast<std::uint32_t>(_mm_movemask_epi8(IsNoThreeByteUnit(units))) | 1U << kBlock));
}

inline std::size_t PairsFromUtf16(__m128i units, unsigned char* to) noexcept {
    const __m128i scalars =
        _mm_add_epi32(_mm_or_si128(WordField(units, 0x3FF, 10), WordField(units, 0x3FF0000, -16)), Words(0x10000));
    const __m128i head = _mm_or_si128(_mm_srli_epi32(scalars, 18), WordField(scalars, 0x3F000, 8 - 12));
    const __m128i tail = _mm_or_si128(WordField(scalars, 0xFC0, 16 - 6), WordField(scalars, 0x3F, 24));
    Store(to, _mm_or_si128(_mm_or_si128(head, tail), Words(0x808080F0)));
    return CountLeading(HasWordBits(units, 0xFC00FC00, 0xDC00D800));
}

/// Converts the whole blocks of ASCII that come next, as far as a few at a time fit; for the loops below.
using Skim = void (*)(Cursor& cursor) noexcept;

inline void SkimAsciiToUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= 2 * kBlock && cursor.Room() >= 2 * kStepRoom) {
        const __m128i low = Load(cursor.from);
        const __m128i high = Load(cursor.from + kBlock);
        if (_mm_movemask_epi8(_mm_or_si128(low, high)) != 0) {
            return;
        }
        AsciiToUtf16(low, cursor.to);
        AsciiToUtf16(high, cursor.to + kStepRoom);
        cursor.from += 2 * kBlock;
        cursor.to += 2 * kStepRoom;
    }
}

inline void SkimAsciiFromUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= 4 * kBlock && cursor.Room() >= 2 * kBlock) {
        const __m128i a = Load(cursor.from);
        const __m128i b = Load(cursor.from + kBlock);
        const __m128i c = Load(cursor.from + 2 * kBlock);
        const __m128i d = Load(cursor.from + 3 * kBlock);
        const __m128i all = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
        if (_mm_movemask_epi8(HasUnitBits(all, 0xFF80, 0)) != 0xFFFF) {
            return;
        }
        Store(cursor.to, _mm_packus_epi16(a, b));
        Store(cursor.to + kBlock, _mm_packus_epi16(c, d));
        cursor.from += 4 * kBlock;
        cursor.to += 2 * kBlock;
    }
}

/// A single character between runs of another kind, as accents among ASCII are, and spaces among words.
inline void StepTwoBytesToUtf16(Cursor& cursor) noexcept {
    if (cursor.Left() >= 2 && cursor.Room() >= 2 && Plain::Utf8Size(cursor.from[0]) == 2 &&
        Plain::IsContinuation(cursor.from[1])) {
        StoreUnit(cursor.to, (cursor.from[0] & 0x1FU) << 6 | (cursor.from[1] & 0x3FU));
        cursor.from += 2;
        cursor.to += 2;
    }
}
inline void StepAsciiToUtf16(Cursor& cursor) noexcept {
    if (cursor.Left() >= 1 && cursor.Room() >= 2 && *cursor.from < 0x80) {
        StoreUnit(cursor.to, *cursor.from++);
        cursor.to += 2;
    }
}

inline void StepTwoBytesFromUtf16(Cursor& cursor) noexcept {
    if (cursor.Left() >= 2 && cursor.Room() >= 2) {
        if (const std::uint32_t unit = LoadUnit(cursor.from); unit >= 0x80 && unit < 0x800) {
            cursor.to[0] = static_cast<unsigned char>(0xC0 | unit >> 6);
            cursor.to[1] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
            cursor.Advance(2, 2);
        }
    }
}
inline void StepAsciiFromUtf16(Cursor& cursor) noexcept {
    if (cursor.Left() >= 2 && cursor.Room() >= 1) {
        if (const std::uint32_t unit = LoadUnit(cursor.from); unit < 0x80) {
            *cursor.to = static_cast<unsigned char>(unit);
            cursor.Advance(2, 1);
        }
    }
}

template <Skim SkimAscii = SkimAsciiToUtf16>
__attribute__((target("ssse3"))) Progress Utf8ToUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (std::size_t read = kBlock; read != 0 && cursor.Left() >= kBlock && cursor.Room() >= kStepRoom;) {
        const __m128i bytes = Load(cursor.from);
        const unsigned char first = *cursor.from;
        if (first < 0x80) {
            read = AsciiToUtf16(bytes, cursor.to);
            cursor.Advance(read, 2 * read);
            if (read == kBlock) {
                SkimAscii(cursor);
            } else {
                StepTwoBytesToUtf16(cursor);
            }
        } else if (first < 0xE0) {
            read = TwoBytesToUtf16(bytes, cursor.to);
            cursor.Advance(read, read);
            StepAsciiToUtf16(cursor);
        } else if (first < 0xF0) {
            read = ThreeBytesToUtf16(bytes, cursor.to);
            // A guess frees the next step from waiting for the count.
            if (read == 15) [[likely]] {
                cursor.Advance(15, 10);
            } else {
                cursor.Advance(read, read / 3 * 2);
            }
        } else {
            read = FourBytesToUtf16(bytes, cursor.to);
            if (read == kBlock) [[likely]] {
                cursor.Advance(kBlock, kBlock);
            } else {
                cursor.Advance(read, read);
            }
        }
    }
    return Plain::Utf8ToUtf16Rest(cursor, input, output);
}

template <Skim SkimAscii = SkimAsciiFromUtf16>
__attribute__((target("ssse3"))) Progress Utf16ToUtf8(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (std::size_t read = kBlock; read != 0 && cursor.Left() >= kBlock && cursor.Room() >= kStepRoom;) {
        const __m128i units = Load(cursor.from);
        const std::uint32_t first = LoadUnit(cursor.from);
        if (first < 0x80) {
            read = AsciiFromUtf16(units, cursor.to);
            cursor.Advance(read, read / 2);
            if (read == kBlock) {
                SkimAscii(cursor);
            } else {
                StepTwoBytesFromUtf16(cursor);
            }
        } else if (first < 0x800) {
            read = TwoBytesFromUtf16(units, cursor.to);
            cursor.Advance(read, read);
            StepAsciiFromUtf16(cursor);
        } else if ((first & 0xF800) != 0xD800) {
            read = ThreeBytesFromUtf16(units, cursor.to);
            if (read == kBlock) [[likely]] {
                cursor.Advance(kBlock, kBlock / 2 * 3);
            } else {
                cursor.Advance(read, read / 2 * 3);
            }
        } else {
            read = PairsFromUtf16(units, cursor.to);
            cursor.Advance(read, read);
        }
    }
    return Plain::Utf16ToUtf8Rest(cursor, input, output);
}

}  // namespace TextConversion::Ssse3
