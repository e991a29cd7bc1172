// Property: a time from 1601 on has the fields that std::chrono gives it, is made of them again, and has the text that
// printf makes of them. A date with any time of day gives the sum of both, or the nearest end of the range.
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>

#include <Lum/TimeStamp.h>

#include "fuzz/Fuzz.h"

namespace {

using Lum::TimeStamp;
using namespace std::chrono;

void RequireFieldsOf(TimeStamp time) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    unsigned fraction = 0;
    Require(time.ToYMDHMSF(year, month, day, hour, minute, second, fraction));
    const auto today = floor<days>(time.ToSysTime());
    const year_month_day date(today);
    const hh_mm_ss clock(time.ToSysTime() - today);
    Require(date == std::chrono::year(year) / month / day && fraction == clock.subseconds().count());
    Require(hour == clock.hours().count() && minute == clock.minutes().count() && second == clock.seconds().count());
    Require(TimeStamp(year, month, day, hour, minute, second, 0).GetTicks() + fraction == time.GetTicks());
    Require(TimeStamp::FromSysTime(time.ToSysTime()) == time);
    char text[100];
    std::snprintf(text, sizeof text, "%d-%02d-%02dT%02d:%02d:%02dZ", year, month, day, hour, minute, second);
    Require(time.ToW3DTF() == text);
}

/// The digits behind a point as ticks: seven, rounded by the eighth.
std::int64_t TicksOf(unsigned fraction) {
    const std::string digits = std::to_string(fraction).append(8, '0').substr(0, 8);
    return (std::stoll(digits) + 5) / 10;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    using Range = std::numeric_limits<std::int64_t>;
    // Of any size, for small numbers are as likely to be wrong as large ones.
    RequireFieldsOf(TimeStamp::FromTicks((choices.Take<std::int64_t>() & Range::max()) >> choices.Below(64)));
    const int year = choices.Take<std::uint16_t>() % 34'000 - 4'000, month = 1 + static_cast<int>(choices.Below(12));
    const auto any = [&] { return choices.Take<int>() >> choices.Below(32); };
    const int day = any(), hour = any(), minute = any(), second = any();
    const auto fraction = static_cast<unsigned>(any());
    const auto first = sys_days(std::chrono::year(year) / month / 1).time_since_epoch().count();
    std::int64_t seconds = (((first + day - 1) * 24 + hour) * 60 + minute) * 60 + second;
    seconds += TimeStamp::kTicksTo1970 / TimeStamp::kTicksPerSecond;
    // Two addends of one sign, so that the sum is beyond the range if one of them is.
    const std::int64_t carry = seconds < 0 ? 1 : 0;
    std::int64_t ticks = 0;
    if (__builtin_mul_overflow(seconds + carry, TimeStamp::kTicksPerSecond, &ticks) ||
        __builtin_add_overflow(ticks, TicksOf(fraction) - carry * TimeStamp::kTicksPerSecond, &ticks)) {
        ticks = carry != 0 ? Range::min() : Range::max();
    }
    Require(TimeStamp(year, month, day, hour, minute, second, fraction).GetTicks() == ticks);
    return 0;
}
