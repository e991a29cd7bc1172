// Decodes escapes in place, sixteen bytes in each step, with SSSE3.
//
// The processor cannot predict where the next escape is, and a wrong prediction costs more than a block. Therefore
// no branch depends on the positions of escapes. Every position of a block is decoded as if an escape began there,
// the results are used where one does, and a shuffle closes the gaps.
#pragma once

#include <tmmintrin.h>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/URI/UnescapingPlain.h"

namespace Lum::Internal::Ssse3 {

/// For each set of positions among eight, as bits: the other positions in their order.
inline constexpr auto kKeptPositions = [] {
    std::array<std::array<std::uint8_t, 8>, 256> table{};
    for (std::size_t removed = 0; removed < table.size(); ++removed) {
        std::size_t kept = 0;
        for (std::uint8_t position = 0; position < 8; ++position) {
            if ((removed >> position & 1U) == 0) {
                table[removed][kept++] = position;
            }
        }
    }
    return table;
}();

inline __m128i Load(const void* from) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

/// The value of each byte as a hexadecimal digit; above 15 if it is none.
inline __m128i DigitValues(__m128i bytes) noexcept {
    const auto all = [](int value) { return _mm_set1_epi8(static_cast<char>(value)); };
    // The addition moves "9" to 255, and larger bytes wrap to small values. The saturated subtraction then leaves
    // values of at least 240 for the ten digits only.
    const __m128i decimal = _mm_sub_epi8(_mm_subs_epu8(_mm_add_epi8(bytes, all(255 - '9')), all(6)), all(240));
    const __m128i upper = _mm_and_si128(bytes, all(~0x20));
    const __m128i letter = _mm_adds_epu8(_mm_sub_epi8(upper, all('A')), all(10));
    return _mm_min_epu8(decimal, letter);
}

/// Writes the first eight bytes of `bytes` without those in `removed` to `to`, and returns their end. Always writes
/// eight bytes.
__attribute__((target("ssse3,popcnt"))) inline char* StoreKept(__m128i bytes, std::uint32_t removed,
                                                               char* to) noexcept {
    const __m128i positions = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kKeptPositions[removed].data()));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi8(bytes, positions));
    return to + 8 - std::popcount(removed);
}

/// Does what Plain::Unescape<false> does.
__attribute__((target("ssse3,popcnt"))) inline char* Unescape(char* first, char* end) noexcept {
    constexpr std::ptrdiff_t step = 16;
    const char* block = first;
    char* to = first;
    // Bit i is set if byte i belongs to an escape of the block before.
    std::uint32_t taken = 0;
    // An escape that begins in the block ends at most two bytes behind it.
    for (; end - block >= step + 2; block += step) {
        const __m128i bytes = Load(block);
        const __m128i isStart = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('%'));
        const __m128i high = _mm_and_si128(isStart, DigitValues(Load(block + 1)));
        const __m128i low = _mm_and_si128(isStart, DigitValues(Load(block + 2)));
        const __m128i above15 = _mm_adds_epu8(_mm_or_si128(high, low), _mm_set1_epi8(127 - 15));
        if (_mm_movemask_epi8(above15) != 0) {
            const auto [from, next] = Plain::UnescapeUntil<false>({block + std::popcount(taken), to}, block + step);
            to = next;
            taken = (1U << (from - block - step)) - 1;
            continue;
        }
        const __m128i values = _mm_or_si128(_mm_slli_epi16(high, 4), low);
        const __m128i decoded = _mm_or_si128(values, _mm_andnot_si128(isStart, bytes));
        // A "%" that belongs to an escape, as in "%4%", does not begin one.
        const std::uint32_t starts = static_cast<std::uint32_t>(_mm_movemask_epi8(isStart)) & ~taken;
        const std::uint32_t removed = taken | starts << 1 | starts << 2;
        to = StoreKept(decoded, removed & 0xFF, to);
        to = StoreKept(_mm_srli_si128(decoded, 8), removed >> 8 & 0xFF, to);
        taken = removed >> step;
    }
    return Plain::UnescapeRest<false>({block + std::popcount(taken), to}, end);
}

}  // namespace Lum::Internal::Ssse3
