// 16-bit units as text: surrogates, how far a 0-terminated text reaches, and comparison by value.
//
// The plain variants are the definition. Searches are UnitSearch.h's.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Lum::Internal {

constexpr bool IsSurrogate(std::uint32_t unit) noexcept { return (unit & 0xF800) == 0xD800; }
constexpr bool IsLeadSurrogate(std::uint32_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsTrailSurrogate(std::uint32_t unit) noexcept { return (unit & 0xFC00) == 0xDC00; }

/// The scalar value of a pair.
constexpr std::uint32_t FromSurrogates(std::uint32_t lead, std::uint32_t trail) noexcept {
    return 0x10000 + ((lead & 0x3FF) << 10 | (trail & 0x3FF));
}

/// A unit of a caller's text, which may be an array of another 16-bit type.
using AnyUnit = unsigned short __attribute__((may_alias));

namespace Plain {

/// How many units stand before the first that is 0 or one of `ends`.
template <std::size_t kEnds>
std::size_t CountBefore(const AnyUnit* text, std::array<unsigned short, kEnds> ends) noexcept {
    std::size_t count = 0;
    while (text[count] != 0 && std::find(ends.begin(), ends.end(), text[count]) == ends.end()) {
        ++count;
    }
    return count;
}

/// How many units stand before the first 0.
inline std::size_t CountUnits(const AnyUnit* text) noexcept { return CountBefore<0>(text, {}); }

/// The first position at which the two runs of `size` units differ, or `size`.
inline std::size_t FirstDifference(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    std::size_t at = 0;
    while (at < size && a[at] == b[at]) {
        ++at;
    }
    return at;
}

}  // namespace Plain

}  // namespace Lum::Internal

// The fast counts read whole blocks around the text, which a sanitizer would report.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUM_IS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define LUM_IS_SANITIZED
#endif
#endif

#ifdef __SSE2__
#include "Source/Base/UnitTextSse2.h"
#endif

namespace Lum::Internal {

#if defined(__SSE2__) && !defined(LUM_IS_SANITIZED)
using Sse2::CountBefore;
using Sse2::CountUnits;
#else
using Plain::CountBefore;
using Plain::CountUnits;
#endif
#ifdef __SSE2__
using Sse2::FirstDifference;
#else
using Plain::FirstDifference;
#endif

inline bool EqualUnits(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    return size == 0 || std::memcmp(a, b, size * sizeof *a) == 0;
}

/// -1, 0 or 1 by the first two units that differ, then by length.
inline int CompareUnits(const unsigned short* a, std::size_t aSize, const unsigned short* b,
                        std::size_t bSize) noexcept {
    const std::size_t shared = std::min(aSize, bSize);
    if (const std::size_t at = FirstDifference(a, b, shared); at != shared) {
        return a[at] < b[at] ? -1 : 1;
    }
    return aSize == bSize ? 0 : (aSize < bSize ? -1 : 1);
}

}  // namespace Lum::Internal
