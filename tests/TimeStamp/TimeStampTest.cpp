#include <Lum/TimeStamp.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <climits>
#include <cstdio>
#include <ctime>
#include <random>
#include <sstream>
#include <unordered_set>
#include <vector>

#include "Source/TimeStamp/CivilCalendar.h"

namespace {

using Lum::TimeStamp;
using std::chrono::sys_days;
using std::chrono::sys_time;

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

struct Fields {
    int year = 1, month = 1, day = 1, hour = 1, minute = 1, second = 1;
    unsigned int fraction = 1;

    friend bool operator==(const Fields&, const Fields&) = default;
};

Fields Split(TimeStamp time) {
    Fields f;
    EXPECT_TRUE(time.ToYMDHMSF(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction));
    return f;
}

/// What the text is defined as.
std::string Printed(const Fields& f) {
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), "%d-%02d-%02dT%02d:%02d:%02dZ", f.year, f.month, f.day, f.hour, f.minute,
                  f.second);
    return text.data();
}

static_assert(TimeStamp(1970, 1, 1, 0, 0, 0, 0).GetTicks() == TimeStamp::kTicksTo1970);
static_assert(TimeStamp().GetTicks() == 0 && TimeStamp() < TimeStamp::FromTicks(1));

TEST(TimeStamp, EveryDayOfEightCenturiesIsTheStandardLibrarys) {
    using std::chrono::operator""y;
    int clock = 0;
    for (sys_days day = sys_days(1601y / 1 / 1); day < sys_days(2401y / 1 / 1); day += std::chrono::days(1)) {
        clock = (clock + 7919) % 86'400;
        const std::chrono::year_month_day date(day);
        const Fields f{int{date.year()},
                       static_cast<int>(unsigned{date.month()}),
                       static_cast<int>(unsigned{date.day()}),
                       clock / 3600,
                       clock / 60 % 60,
                       clock % 60,
                       static_cast<unsigned int>(9'999'999 - clock)};
        const TimeStamp time(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
        ASSERT_EQ(time.ToSysTime(), day + std::chrono::seconds(clock) + TimeStamp::Ticks(f.fraction));
        ASSERT_EQ(time, TimeStamp::FromSysTime(time.ToSysTime()));
        ASSERT_EQ(Split(time), f);
        ASSERT_EQ(time.ToW3DTF(), Printed(f));
    }
}

TEST(TimeStamp, FastFormsAnswerAsTheDefinitions) {
    const auto expectSame = [](int year, int month, int day, int clock, unsigned int fraction) {
        ASSERT_EQ(Lum::Detail::TicksOfFields(year, month, day, clock, clock, clock, fraction),
                  Lum::Detail::TicksOfAnyFields(year, month, day, clock, clock, clock, fraction))
            << year << ' ' << month << ' ' << day << ' ' << clock << ' ' << fraction;
    };
    for (int year = -2; year <= 30'002; ++year) {
        for (int month = year % 7 - 1; month < 66; month += 1 + (year & 1)) {
            expectSame(year, month, 1, 0, 0);
        }
    }
    for (int edge = -1; edge <= 65; ++edge) {
        expectSame(30'000, 63, edge, edge, 9'999'999);
        expectSame(30'000, 63, 63, edge, 999'999);
        expectSame(0, 0, edge, 0, 10'000'000);
    }
    for (std::int32_t day = 0; day <= Lum::kLastDay; day += day < 300'000 ? 1 : 11) {
        const Lum::CivilDate date = Lum::DateOfDay(day);
        ASSERT_EQ(date, Lum::Plain::DateOfDay(day)) << day;
        ASSERT_EQ(Lum::Detail::DayOfDate(date.year, date.month, date.day), day);
    }
}

TEST(TimeStamp, FieldsRollOverAndSaturate) {
    struct Row {
        Fields fields;
        std::int64_t ticks;
    };
    constexpr int low = INT_MIN;
    constexpr int high = INT_MAX;
    for (const auto& [f, ticks] : std::vector<Row>{
             {{2008, 2, 29, 12, 30, 45, 5}, 128'487'618'455'000'000},
             {{2007, 14, 1, 0, 0, 0, 0}, 128'462'976'000'000'000},   // 2008-02-01
             {{2007, 26, 1, 0, 0, 0, 0}, 128'779'200'000'000'000},   // 2009-02-01
             {{2007, -10, 1, 0, 0, 0, 0}, 127'832'256'000'000'000},  // 2006-02-01
             {{2008, 3, 0, 24, -60, 3600, 0}, 128'488'032'000'000'000},
             {{-4800, 2, 29, 0, 0, 0, 0}, -2'019'909'312'000'000'000},  // The formula's: as the day after it.
             {{-5000, 7, 1, 0, 0, 0, 0}, -2'082'919'104'000'000'000},
             {{1601, 1, 89'478'486, low, 0, 0, 0}, -288'000'000'000},  // Either alone is beyond the range.
             {{30828, 9, 14, 2, 48, 5, 4'775'806}, kHighest - 1},
             {{30828, 9, 14, 2, 48, 5, 4'775'808}, kHighest},
             {{30828, 9, 14, 2, 48, 4, 99'999'995}, kHighest - 4'775'807},
             {{1601, 1, -10'675'198, -2, -48, -5, 0}, kLowest + 4'775'808},
             {{1601, 1, -10'675'198, -2, -48, -6, 5'224'193}, kLowest + 1},
             {{1601, 1, -10'675'198, -2, -48, -6, 5'224'191}, kLowest},
             {{1601, 1, -10'675'198, -2, -48, -7, 99'999'995}, kLowest},
             {{high, high, high, high, high, high, UINT_MAX}, kHighest},
             {{low, low, low, low, low, low, 0}, kLowest},
             {{low, high, low, high, low, high, UINT_MAX}, kLowest},
         }) {
        EXPECT_EQ(TimeStamp(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction).GetTicks(), ticks)
            << Printed(f);
    }
}

TEST(TimeStamp, AFractionIsTheDigitsBehindThePoint) {
    struct Row {
        unsigned int digits;
        std::int64_t ticks;
        unsigned int count;
    };
    for (const auto& [digits, ticks, count] : std::vector<Row>{
             {0, 0, 0},
             {5, 5'000'000, 1},
             {10, 1'000'000, 2},
             {123, 1'230'000, 3},
             {9'999'999, 9'999'999, 7},
             {10'000'000, 1'000'000, 8},
             {12'345'674, 1'234'567, 8},
             {12'345'675, 1'234'568, 8},
             {123'456'789, 1'234'568, 9},
             {123'456'749, 1'234'567, 9},  // 74.9 is 74, not 75.
             {99'999'994, 9'999'999, 8},
             {99'999'995, 10'000'000, 8},  // The next second.
             {999'999'949, 9'999'999, 9},
             {UINT_MAX, 4'294'967, 10},
         }) {
        EXPECT_EQ(TimeStamp(1601, 1, 1, 0, 0, 0, digits).GetTicks(), ticks) << digits;
        EXPECT_EQ(Lum::getNumDecimalDigits(digits), count) << digits;
    }
}

TEST(TimeStamp, AnyCountSplitsIntoFieldsThatAddUp) {
    struct Row {
        std::int64_t ticks;
        Fields fields;
        const char* text;
    };
    for (const auto& [ticks, fields, text] : std::vector<Row>{
             {-1, {1601, 1, 1, 0, 0, 0, 4'294'967'295}, "1601-01-01T00:00:00Z"},
             {-1'295'999'999'999, {1600, 12, 31, -11, -59, -59, 4'284'967'297}, "1600-12-31T-11:-59:-59Z"},
             {kHighest, {30828, 9, 14, 2, 48, 5, 4'775'807}, "30828-09-14T02:48:05Z"},
             {kLowest, {-27626, -7, -10, -2, -48, -5, 4'290'191'488}, "-27626--7--10T-2:-48:-5Z"},
             {-2'019'910'176'000'000'001, {-4800, 2, 29, -24, 0, 0, 4'294'967'295}, "-4800-02-29T-24:00:00Z"},
         }) {
        EXPECT_EQ(Split(TimeStamp::FromTicks(ticks)), fields) << ticks;
        EXPECT_EQ(TimeStamp::FromTicks(ticks).ToW3DTF(), text) << ticks;
    }
    std::mt19937_64 random(1);
    for (int round = 0; round < 50'000; ++round) {
        const auto ticks = static_cast<std::int64_t>(random()) >> random() % 64;
        const Fields f = Split(TimeStamp::FromTicks(ticks));
        ASSERT_EQ(TimeStamp(f.year, f.month, f.day, f.hour, f.minute, f.second, 0).GetTicks(),
                  ticks - static_cast<std::int32_t>(f.fraction));
        ASSERT_EQ(TimeStamp::FromTicks(ticks).ToW3DTF(), Printed(f));
    }
}

TEST(TimeStamp, BridgesToTheStandardLibraryAndBack) {
    using namespace std::chrono;
    const auto ticksFrom1970 = [](auto duration) {
        return TimeStamp::FromSysTime(sys_time<decltype(duration)>(duration)).GetTicks() - TimeStamp::kTicksTo1970;
    };
    EXPECT_EQ(ticksFrom1970(nanoseconds(199)), 1);
    EXPECT_EQ(ticksFrom1970(nanoseconds(-1)), -1);
    EXPECT_EQ(ticksFrom1970(nanoseconds::min()), kLowest / 100 - 1);
    EXPECT_EQ(ticksFrom1970(days(-1)), -TimeStamp::kTicksPerDay);
    EXPECT_EQ(ticksFrom1970(years(1)), 315'569'520'000'000);
    using Thirds = duration<std::int64_t, std::ratio<1, 3>>;
    EXPECT_EQ(ticksFrom1970(Thirds(-4)), -13'333'334);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds::max()).GetTicks(), kHighest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds::min()).GetTicks(), kLowest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_days(days(INT_MAX))).GetTicks(), kHighest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_time<TimeStamp::Ticks>::max()).GetTicks(), kHighest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds(seconds(-933'981'677'285))).GetTicks(), kLowest + 4'775'808);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds(seconds(-933'981'677'286))).GetTicks(), kLowest);
    EXPECT_EQ(TimeStamp::FromTicks(kHighest).ToSysTime().time_since_epoch().count(),
              kHighest - TimeStamp::kTicksTo1970);
    EXPECT_EQ(TimeStamp::FromTicks(kLowest).ToSysTime(), sys_time<TimeStamp::Ticks>::min());
}

TEST(TimeStamp, IsAValueThatTellsTheTime) {
    const std::time_t before = std::time(nullptr);
    TimeStamp now;
    now.SetToCurrentTime();
    const std::time_t after = std::time(nullptr);
    EXPECT_GE(now, TimeStamp::FromSysTime(std::chrono::system_clock::from_time_t(before)));
    EXPECT_LE(now, TimeStamp::FromSysTime(std::chrono::system_clock::from_time_t(after)));
    EXPECT_EQ(now.GetTicks() % TimeStamp::kTicksPerSecond, 0);
    EXPECT_EQ((std::unordered_set<TimeStamp>{now, TimeStamp(), now}.size()), 2U);
    std::ostringstream out;
    out << TimeStamp(2008, 2, 29, 12, 30, 45, 5);
    EXPECT_EQ(out.str(), "2008-02-29T12:30:45Z");
}

}  // namespace
