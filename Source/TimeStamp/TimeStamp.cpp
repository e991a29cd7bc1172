// The time stamp: ticks to fields, the clock, the text. Dates are CivilCalendar's, digits TimeText's;
// fields to ticks are the header's.
#include <Lum/TimeStamp.h>

#include <array>
#include <ctime>
#include <ostream>

#include "Source/TimeStamp/CivilCalendar.h"
#include "Source/TimeStamp/TimeText.h"

static_assert(sizeof(std::time_t) == 8, "the clock goes on after 2038 (cmake/Library.cmake)");

namespace Lum {

using namespace Internal;

namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;

struct Fields {
    CivilDate date;
    int hour;
    int minute;
    int second;
    unsigned int fraction;
};

/// A time before 1601, where the formula's date may be another day's: fields and ticks have to add up all the same.
[[gnu::cold]] Fields SplitNegative(std::int64_t ticks) noexcept {
    const CivilDate date = DateOfDay(static_cast<std::int32_t>(ticks / TimeStamp::kTicksPerDay));
    const std::int64_t rest = ticks - Detail::DayOfDate(date.year, date.month, date.day) * TimeStamp::kTicksPerDay;
    const std::int64_t seconds = rest / TimeStamp::kTicksPerSecond;
    return {date, static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60),
            static_cast<unsigned int>(rest % TimeStamp::kTicksPerSecond)};
}

inline Fields Split(std::int64_t ticks) noexcept {
    if (ticks < 0) [[unlikely]] {
        return SplitNegative(ticks);
    }
    const auto count = static_cast<std::uint64_t>(ticks);
    const std::uint64_t allSeconds = count / TimeStamp::kTicksPerSecond;
    const std::uint64_t day = allSeconds / kSecondsPerDay;
    const auto seconds = static_cast<std::uint32_t>(allSeconds - day * kSecondsPerDay);
    const std::uint32_t minutes = seconds / 60;
    return {DateOfDay(static_cast<std::int32_t>(day)), static_cast<int>(minutes / 60), static_cast<int>(minutes % 60),
            static_cast<int>(seconds % 60),
            static_cast<std::uint32_t>(count - allSeconds * TimeStamp::kTicksPerSecond)};
}

}  // namespace

void TimeStamp::SetToCurrentTime() noexcept {
    m_Ticks = Detail::Sum(std::time(nullptr) + kTicksTo1970 / kTicksPerSecond, kTicksPerSecond, 0);
}

bool TimeStamp::ToYMDHMSF(int& year, int& month, int& day, int& hour, int& minute, int& second,
                          unsigned int& fraction) const noexcept {
    const Fields fields = Split(m_Ticks);
    year = fields.date.year;
    month = fields.date.month;
    day = fields.date.day;
    hour = fields.hour;
    minute = fields.minute;
    second = fields.second;
    fraction = fields.fraction;
    return true;
}

std::string TimeStamp::ToW3DTF() const {
    const Fields fields = Split(m_Ticks);
    std::array<char, kTimeTextSize> text;
    char* const end = WriteTime(text.data(), fields.date.year, fields.date.month, fields.date.day, fields.hour,
                                fields.minute, fields.second);
    return {text.data(), end};
}

std::ostream& operator<<(std::ostream& out, const TimeStamp& time) { return out << time.ToW3DTF(); }

unsigned int getNumDecimalDigits(unsigned int n) noexcept { return Detail::DecimalDigits(n); }

}  // namespace Lum
