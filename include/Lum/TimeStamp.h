// Lum::TimeStamp: a date and time as one number.
//
// A time stamp counts ticks of 100 nanoseconds from 1601-01-01 00:00:00 in the Gregorian calendar,
// extended to all years; there is no time zone and no leap second. It is a plain value of eight bytes:
// copied, compared and hashed as its count. Counts from 0 on, which reach to 30828-09-14, split into
// the usual fields. Earlier times can be held, compared and bridged to std::chrono, but their fields
// are not those of a calendar; see ToYMDHMSF.
//
// Nothing here depends on a locale or on the host's time zone, and nothing throws but the
// std::bad_alloc of a text. Everything may be used from an application's own static initialisers.
// Threads: one object is used by one thread at a time; different ones are independent.
#pragma once

#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <ratio>
#include <string>

#include <Lum/Export.h>
#include <Lum/TimeStampFields.h>

namespace Lum {

/// See the head of this file.
class LUM_API TimeStamp {
public:
    /// The unit of the count, as a duration.
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

    static constexpr std::int64_t kTicksPerSecond = Detail::kTicksPerSecond;  ///< 10,000,000.
    static constexpr std::int64_t kTicksPerMinute = 60 * kTicksPerSecond;     ///< 60 seconds.
    static constexpr std::int64_t kTicksPerHour = 60 * kTicksPerMinute;       ///< 60 minutes.
    static constexpr std::int64_t kTicksPerDay = 24 * kTicksPerHour;          ///< 24 hours.
    /// The count at 1970-01-01 00:00:00.
    static constexpr std::int64_t kTicksTo1970 = 134'774 * kTicksPerDay;

    // ---- Construction ---------------------------------------------------------------------------

    /// 1601-01-01 00:00:00, the count 0.
    constexpr TimeStamp() noexcept = default;
    /// The time with these calendar fields. Any values are taken: what is beyond a field's range rolls
    /// over (hour 24 is the next day's hour 0, month 13 the next year's January), a sum beyond the
    /// 64-bit range gives its nearest end. The date's formula is Fliegel and Van Flandern's (1968)
    /// with divisions that truncate; it is the calendar's from March of the year -4800 on, for months
    /// up to 14. Greater ones, but for 26, 38 and so on, come one or two days late: day 1 of month 15 of
    /// 2007 is 2008-03-02.
    ///
    /// `fraction` is what is written behind the second's point: 5 is half a second, 123 is 0.123 s;
    /// 0.05 s cannot be said so. Of more than seven digits the eighth is rounded half up, and those
    /// behind it are dropped: 123456789 is 1234568 ticks, and 99999995 is the whole next second.
    constexpr TimeStamp(int year, int month, int day, int hour, int minute, int second, unsigned int fraction) noexcept;
    /// The time of a count; any value.
    [[nodiscard]] static constexpr TimeStamp FromTicks(std::int64_t ticks) noexcept {
        TimeStamp stamp;
        stamp.m_Ticks = ticks;
        return stamp;
    }
    /// The time of a std::chrono time point of any period, rounded down to a tick; beyond the 64-bit
    /// range its nearest end. `FromSysTime(std::chrono::system_clock::now())` keeps the fraction that
    /// SetToCurrentTime does not.
    template <std::signed_integral Rep, class Period>
    [[nodiscard]] static constexpr TimeStamp FromSysTime(
        std::chrono::sys_time<std::chrono::duration<Rep, Period>> time) noexcept;
    /// Takes the present time (UTC) from the system's clock, in whole seconds.
    void SetToCurrentTime() noexcept;

    // ---- Questions ------------------------------------------------------------------------------

    /// The count of ticks from 1601-01-01 00:00:00.
    [[nodiscard]] constexpr std::int64_t GetTicks() const noexcept { return m_Ticks; }
    /// The calendar fields, with `fraction` in ticks (0 to 9999999), unlike the constructor's digits. Always
    /// true. A negative count is divided towards zero as well: from March of the year -4800 on, the time of day
    /// then counts back from midnight of the date that is next, each of its fields 0 or below and `fraction`
    /// modulo 2^32. One tick before 1601 is 1601-01-01 00:00:00 with the fraction 4294967295. Earlier
    /// fields are the formula's own; months and days may be below 1.
    bool ToYMDHMSF(int& year, int& month, int& day, int& hour, int& minute, int& second,
                   unsigned int& fraction) const noexcept;
    /// The fields but the fraction, in the W3C's profile of ISO 8601: "2008-02-29T12:30:45Z". The year
    /// has the digits it needs, from 10000 on five; each other field has at least two characters, which
    /// for negative ones include the sign.
    [[nodiscard]] std::string ToW3DTF() const;
    /// The same time for std::chrono. Where that has no count for it (before 19 April of the year -27258), its
    /// lowest.
    [[nodiscard]] constexpr std::chrono::sys_time<Ticks> ToSysTime() const noexcept {
        constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
        return std::chrono::sys_time<Ticks>(Ticks(m_Ticks < lowest + kTicksTo1970 ? lowest : m_Ticks - kTicksTo1970));
    }

    /// Earlier is less.
    friend constexpr auto operator<=>(const TimeStamp&, const TimeStamp&) noexcept = default;

private:
    std::int64_t m_Ticks = 0;
};

static_assert(sizeof(TimeStamp) == 8);

/// Prints ToW3DTF().
LUM_API std::ostream& operator<<(std::ostream& out, const TimeStamp& time);

/// How many decimal digits `n` has: 0 for 0, 2 for 10.
[[nodiscard]] LUM_API unsigned int getNumDecimalDigits(unsigned int n) noexcept;

// The bodies of the above.

constexpr TimeStamp::TimeStamp(int year, int month, int day, int hour, int minute, int second,
                               unsigned int fraction) noexcept
    : m_Ticks(Detail::TicksOfFields(year, month, day, hour, minute, second, fraction)) {}

template <std::signed_integral Rep, class Period>
constexpr TimeStamp TimeStamp::FromSysTime(std::chrono::sys_time<std::chrono::duration<Rep, Period>> time) noexcept {
    using TicksPerUnit = std::ratio_divide<Period, Ticks::period>;
    constexpr std::int64_t num = TicksPerUnit::num;
    constexpr std::int64_t den = TicksPerUnit::den;
    static_assert(num <= std::numeric_limits<std::int64_t>::max() / 2 / den,
                  "a period of this fraction is not supported");
    // In groups of `den` units, each of `num` ticks, so that nothing is rounded before the end.
    const std::int64_t count = time.time_since_epoch().count();
    const bool isBelow = count % den < 0;
    const std::int64_t groups = count / den - (isBelow ? 1 : 0);
    const std::int64_t units = count % den + (isBelow ? den : 0);
    std::int64_t ticks = units * num / den + kTicksTo1970 % num;
    const std::int64_t carry = ticks / num;
    ticks %= num;
    constexpr std::int64_t groupsTo1970 = kTicksTo1970 / num;
    if (groups > std::numeric_limits<std::int64_t>::max() - groupsTo1970 - carry) {
        return FromTicks(std::numeric_limits<std::int64_t>::max());
    }
    return FromTicks(Detail::Sum(groups + groupsTo1970 + carry, num, ticks));
}

}  // namespace Lum

/// @cond
template <>
struct std::hash<Lum::TimeStamp> {
    [[nodiscard]] std::size_t operator()(Lum::TimeStamp time) const noexcept {
        return std::hash<std::int64_t>{}(time.GetTicks());
    }
};
/// @endcond
