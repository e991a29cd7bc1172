// Decodes escapes in place sixteen bytes at a step with SSSE3.
//
// How long the runs between escapes are cannot be foreseen, and a wrong guess costs more than a block:
// hence no branch depends on where escapes stand. Every place of a block is decoded as if an escape
// began there, the results go where one does, and a shuffle closes the gaps.
#pragma once

#include <tmmintrin.h>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/URI/UnescapingPlain.h"

namespace Lum::Ssse3 {

inline bool IsSupported() noexcept {
    // Static initialisers may come here before the compiler's own has looked at the processor.
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0 && __builtin_cpu_supports("popcnt") != 0;
}

/// For each set of places among eight, as bits: the other places in their order.
inline constexpr auto kKeptPlaces = [] {
    std::array<std::array<std::uint8_t, 8>, 256> table{};
    for (std::size_t removed = 0; removed < table.size(); ++removed) {
        std::size_t kept = 0;
        for (std::uint8_t place = 0; place < 8; ++place) {
            if ((removed >> place & 1U) == 0) {
                table[removed][kept++] = place;
            }
        }
    }
    return table;
}();

inline __m128i Load(const void* from) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

/// The value of each byte as a hexadecimal digit; above 15 for what is none.
inline __m128i DigitValues(__m128i bytes) noexcept {
    const auto all = [](int value) { return _mm_set1_epi8(static_cast<char>(value)); };
    // With "9" moved to the top of the range, what stands above it wraps to the bottom. Saturation
    // then keeps the values from 240 for the ten digits.
    const __m128i decimal = _mm_sub_epi8(_mm_subs_epu8(_mm_add_epi8(bytes, all(255 - '9')), all(6)), all(240));
    const __m128i upper = _mm_and_si128(bytes, all(~0x20));
    const __m128i letter = _mm_adds_epu8(_mm_sub_epi8(upper, all('A')), all(10));
    return _mm_min_epu8(decimal, letter);
}

/// Writes the first eight bytes of `bytes` to `to`, those of `removed` left out, and returns the end of
/// them. Eight bytes are written in any case.
__attribute__((target("ssse3,popcnt"))) inline char* StoreKept(__m128i bytes, std::uint32_t removed,
                                                               char* to) noexcept {
    const __m128i places = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kKeptPlaces[removed].data()));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi8(bytes, places));
    return to + 8 - std::popcount(removed);
}

/// Gives what Plain::Unescape<false> gives.
__attribute__((target("ssse3,popcnt"))) inline char* Unescape(char* first, char* end) noexcept {
    constexpr std::ptrdiff_t step = 16;
    const char* block = first;
    char* to = first;
    // Bit i tells that an escape from the block before takes byte i.
    std::uint32_t taken = 0;
    // An escape that begins in the block reaches two bytes beyond it at most.
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
        // A "%" that an escape took, as "%4%" does, starts none.
        const std::uint32_t starts = static_cast<std::uint32_t>(_mm_movemask_epi8(isStart)) & ~taken;
        const std::uint32_t removed = taken | starts << 1 | starts << 2;
        to = StoreKept(decoded, removed & 0xFF, to);
        to = StoreKept(_mm_srli_si128(decoded, 8), removed >> 8 & 0xFF, to);
        taken = removed >> step;
    }
    return Plain::UnescapeRest<false>({block + std::popcount(taken), to}, end);
}

}  // namespace Lum::Ssse3
