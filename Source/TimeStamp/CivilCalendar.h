// The date of a day counted from 1601-01-01, once as the definition and once fast. The opposite direction, which
// callers may want at compile time, is in Lum/TimeStampFields.h.
//
// The definition is the arithmetic of H. F. Fliegel and T. C. Van Flandern (Communications of the ACM 11,
// 1968, p. 657) with divisions that truncate; it decides for every day. The fast form is that of C. Neri
// and L. Schneider ("Euclidean affine functions and their application to calendar algorithms", 2022),
// which needs neither signs nor slow divisions. It is a few percent faster than std::chrono's, which accepts
// negative days.
#pragma once

#include <cstdint>

namespace Lum::Internal {

struct CivilDate {
    int year;
    int month;
    int day;

    friend constexpr bool operator==(const CivilDate&, const CivilDate&) = default;
};

/// The days that a time stamp's count can hold reach this far to both sides.
inline constexpr std::int32_t kLastDay = 10'675'199;

namespace Plain {

/// The date of a day from -kLastDay to kLastDay.
constexpr CivilDate DateOfDay(std::int32_t day) noexcept {
    constexpr std::int32_t julianDayOf1601 = 2'305'814;
    std::int32_t rest = day + julianDayOf1601 + 68'569;
    const std::int32_t centuries = 4 * rest / 146'097;
    rest -= (146'097 * centuries + 3) / 4;
    const std::int32_t years = 4000 * (rest + 1) / 1'461'001;
    rest = rest - 1461 * years / 4 + 31;
    const std::int32_t months = 80 * rest / 2447;
    const std::int32_t wraps = months / 11;
    return {100 * centuries - 4900 + years + wraps, months + 2 - 12 * wraps, rest - 2447 * months / 80};
}

}  // namespace Plain

/// Plain::DateOfDay, with the fast form for days from 0 on.
constexpr CivilDate DateOfDay(std::int32_t day) noexcept {
    if (day < 0) {
        return Plain::DateOfDay(day);
    }
    // Days since 0000-03-01, in quarters, so that a century of 36524.25 days divides them.
    const std::uint32_t quarters = 4 * (static_cast<std::uint32_t>(day) + 584'694) + 3;
    const std::uint32_t century = quarters / 146'097;
    // The year and the day in it are the quotient and the rest of one division, by 2^32 / 1461.
    const std::uint64_t scaled = std::uint64_t{2'939'745} * (quarters % 146'097 | 3);
    const auto yearOfCentury = static_cast<std::uint32_t>(scaled >> 32);
    const std::uint32_t dayOfYear = static_cast<std::uint32_t>(scaled) / 2'939'745 / 4;
    const std::uint32_t monthAndDay = 2141 * dayOfYear + 197'913;
    const std::uint32_t isEarly = dayOfYear >= 306 ? 1 : 0;
    return {static_cast<int>(100 * century + yearOfCentury + isEarly),
            static_cast<int>((monthAndDay >> 16) - 12 * isEarly), static_cast<int>((monthAndDay & 0xFFFF) / 2141 + 1)};
}

}  // namespace Lum::Internal
