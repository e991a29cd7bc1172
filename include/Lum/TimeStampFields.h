// The ticks of calendar fields, for Lum/TimeStamp.h alone. They are computed in a header so that a time can be built
// at compile time, and at run time without a call.
//
// Written twice: for any fields, which is the definition, and as a fast path for fields in their usual ranges.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

/// @cond
namespace Lum::Detail {

inline constexpr std::int64_t kTicksPerSecond = 10'000'000;

/// The day of a date, from 1601-01-01: the formula of H. F. Fliegel and T. C. Van Flandern
/// (Communications of the ACM 11, 1968, p. 657) with divisions that truncate. Any ints.
constexpr std::int64_t DayOfDate(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
    const std::int64_t a = (month - 14) / 12;
    return 1461 * (year + 4800 + a) / 4 + 367 * (month - 2 - 12 * a) / 12 - 3 * ((year + 4900 + a) / 100) / 4 + day -
           2'337'889;
}

inline constexpr std::array<std::uint32_t, 10> kPowersOfTen{1,       10,        100,        1'000,       10'000,
                                                            100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

constexpr unsigned int DecimalDigits(std::uint32_t n) noexcept {
    // 1233 / 4096 turns binary digits into decimal ones, at most one too few.
    const auto fewer = static_cast<std::size_t>(std::bit_width(n)) * 1233 / 4096;
    return static_cast<unsigned int>(fewer) + (n >= kPowersOfTen[fewer] ? 1 : 0);
}

/// The ticks of the digits behind a second's point, from 0 to a whole second.
constexpr std::int64_t TicksOfFraction(std::uint32_t digits) noexcept {
    const unsigned int count = DecimalDigits(digits);
    if (count <= 7) {
        return digits * kPowersOfTen[7 - count];
    }
    // Rounded by the eighth digit alone: the ninth and tenth go before it is looked at.
    return (digits / kPowersOfTen[count - 8] + 5) / 10;
}

/// `units` x `ticksPerUnit` + `ticks`, or the end of the 64-bit range that it lies beyond. `ticks` is at
/// least 0 and at most one unit.
constexpr std::int64_t Sum(std::int64_t units, std::int64_t ticksPerUnit, std::int64_t ticks) noexcept {
    using Limits = std::numeric_limits<std::int64_t>;
    if (units >= 0) {
        return units > (Limits::max() - ticks) / ticksPerUnit ? Limits::max() : units * ticksPerUnit + ticks;
    }
    // Counted down from the unit's end: its start may lie below the range where its end does not.
    const std::int64_t missing = ticksPerUnit - ticks;
    return units + 1 < (Limits::min() + missing) / ticksPerUnit ? Limits::min() : (units + 1) * ticksPerUnit - missing;
}

/// The ticks of any fields. Days and seconds fit 64 bits, so that only the last step can overflow.
[[gnu::cold]] constexpr std::int64_t TicksOfAnyFields(int year, int month, int day, int hour, int minute, int second,
                                                      std::uint32_t fraction) noexcept {
    const std::int64_t hours = DayOfDate(year, month, day) * 24 + hour;
    return Sum((hours * 60 + minute) * 60 + second, kTicksPerSecond, TicksOfFraction(fraction));
}

/// What a month adds to the date's year and to the days before that year, which begins in March.
struct MonthPart {
    std::int32_t years;
    std::int32_t days;
};

/// DayOfDate's terms of the month, for 0 to 63, with the years' start moved to -400 and the days' to 1601.
inline constexpr std::array<MonthPart, 64> kMonthParts = [] {
    std::array<MonthPart, 64> parts{};
    for (std::int32_t month = 0; month < 64; ++month) {
        const std::int32_t a = (month - 14) / 12;
        parts[static_cast<std::size_t>(month)] = {400 + a, 367 * (month - 2 - 12 * a) / 12 - 730'822};
    }
    return parts;
}();

/// TicksOfAnyFields, at once for fields in their ranges or little beyond them, and a fraction of none or
/// seven digits: without slow divisions, and with one place where it leaves for the other.
constexpr std::int64_t TicksOfFields(int year, int month, int day, int hour, int minute, int second,
                                     std::uint32_t fraction) noexcept {
    if (static_cast<std::uint32_t>(month | day | hour | minute | second) >= 64 ||
        static_cast<std::uint32_t>(year) > 30'000 || (fraction - 1'000'000 >= 9'000'000 && fraction != 0))
        [[unlikely]] {
        return TicksOfAnyFields(year, month, day, hour, minute, second, fraction);
    }
    const MonthPart& part = kMonthParts[static_cast<std::size_t>(month)];
    const auto years = static_cast<std::uint32_t>(year + part.years);
    const std::uint32_t centuries = years / 100;
    // After C. Neri and L. Schneider, "Euclidean affine functions and their application to calendar
    // algorithms" (2022): of every hundred years one leap day goes, of every four hundred one stays.
    const auto daysBeforeYear = static_cast<std::int32_t>(1461 * years / 4 - centuries + centuries / 4);
    const std::int64_t days = daysBeforeYear + part.days + day;
    return (days * 86'400 + (3600 * hour + 60 * minute + second)) * kTicksPerSecond + fraction;
}

}  // namespace Lum::Detail
/// @endcond
