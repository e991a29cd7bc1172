#include <Lum/TimeStamp.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <ctime>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include "Source/TimeStamp/CivilCalendar.h"

namespace {

using Lum::TimeStamp;

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

struct Fields {
    int year = 1, month = 1, day = 1, hour = 1, minute = 1, second = 1;
    unsigned int fraction = 1;
};

static_assert(TimeStamp(1970, 1, 1, 0, 0, 0, 0).GetTicks() == TimeStamp::kTicksTo1970);
static_assert(TimeStamp().GetTicks() == 0 && TimeStamp() < TimeStamp::FromTicks(1));

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
    for (std::int32_t day = 0; day <= Lum::Internal::kLastDay; day += day < 300'000 ? 1 : 11) {
        const Lum::Internal::CivilDate date = Lum::Internal::DateOfDay(day);
        ASSERT_EQ(date, Lum::Internal::Plain::DateOfDay(day)) << day;
        ASSERT_EQ(Lum::Detail::DayOfDate(date.year, date.month, date.day), day);
    }
}

TEST(TimeStamp, FieldsRollOverAndSaturate) {
    constexpr int low = INT_MIN, high = INT_MAX;
    for (const auto& [f, ticks] : std::vector<std::pair<Fields, std::int64_t>>{
             {{2008, 2, 29, 12, 30, 45, 5}, 128'487'618'455'000'000},
             {{2007, 15, 1, 0, 0, 0, 0}, 128'488'896'000'000'000},   // 2008-03-02: one day late
             {{2007, -10, 1, 0, 0, 0, 0}, 127'832'256'000'000'000},  // 2006-02-01
             {{2008, 3, 0, 24, -60, 3600, 0}, 128'488'032'000'000'000},
             {{-4800, 2, 29, 0, 0, 0, 0}, -2'019'909'312'000'000'000},  // The formula's: as the day after it.
             {{-5000, 7, 1, 0, 0, 0, 0}, -2'082'919'104'000'000'000},
             {{1601, 1, 89'478'486, low, 0, 0, 0}, -288'000'000'000},  // Either alone is beyond the range.
             {{30828, 9, 14, 2, 48, 5, 4'775'806}, kHighest - 1},
             {{30828, 9, 14, 2, 48, 5, 4'775'808}, kHighest},
             {{1601, 1, -10'675'198, -2, -48, -5, 0}, kLowest + 4'775'808},
             {{1601, 1, -10'675'198, -2, -48, -6, 5'224'193}, kLowest + 1},
             {{1601, 1, -10'675'198, -2, -48, -6, 5'224'191}, kLowest},
             {{high, high, high, high, high, high, UINT_MAX}, kHighest},
             {{low, low, low, low, low, low, 0}, kLowest},
             {{low, high, low, high, low, high, UINT_MAX}, kLowest},
             // A fraction is the digits behind the point.
             {{1601, 1, 1, 0, 0, 0, 10'000'000}, 1'000'000},
             {{1601, 1, 1, 0, 0, 0, 12'345'674}, 1'234'567},
             {{1601, 1, 1, 0, 0, 0, 12'345'675}, 1'234'568},
             {{1601, 1, 1, 0, 0, 0, 123'456'749}, 1'234'567},  // 74.9 is 74, not 75.
             {{1601, 1, 1, 0, 0, 0, 99'999'995}, 10'000'000},  // The next second.
             {{1601, 1, 1, 0, 0, 0, UINT_MAX}, 4'294'967},
         }) {
        EXPECT_EQ(TimeStamp(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction).GetTicks(), ticks);
        EXPECT_EQ(Lum::getNumDecimalDigits(f.fraction), f.fraction == 0 ? 0 : std::to_string(f.fraction).size());
    }
}

TEST(TimeStamp, AnyCountSplitsIntoFieldsThatAddUp) {
    const auto last = TimeStamp::FromTicks(-1), lowest = TimeStamp::FromTicks(kLowest);
    EXPECT_EQ(last.ToW3DTF(), "1601-01-01T00:00:00Z");
    EXPECT_EQ(TimeStamp(10000, 1, 1, 0, 0, 0, 0).ToW3DTF(), "10000-01-01T00:00:00Z");
    EXPECT_EQ(lowest.ToW3DTF(), "-27626--7--10T-2:-48:-5Z");
    EXPECT_EQ(TimeStamp::FromTicks(-2'019'910'176'000'000'001).ToW3DTF(), "-4800-02-29T-24:00:00Z");
    std::mt19937_64 random(1);
    for (int round = 0; round < 50'000; ++round) {
        const auto ticks = static_cast<std::int64_t>(random()) >> random() % 64;
        Fields f;
        TimeStamp::FromTicks(ticks).ToYMDHMSF(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
        ASSERT_EQ(TimeStamp(f.year, f.month, f.day, f.hour, f.minute, f.second, 0).GetTicks(),
                  ticks - static_cast<std::int32_t>(f.fraction));
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
    using Thirds = duration<std::int64_t, std::ratio<1, 3>>;
    EXPECT_EQ(ticksFrom1970(Thirds(-4)), -13'333'334);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds::max()).GetTicks(), kHighest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds::min()).GetTicks(), kLowest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_time<TimeStamp::Ticks>::max()).GetTicks(), kHighest);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds(seconds(-933'981'677'285))).GetTicks(), kLowest + 4'775'808);
    EXPECT_EQ(TimeStamp::FromSysTime(sys_seconds(seconds(-933'981'677'286))).GetTicks(), kLowest);
    EXPECT_EQ(TimeStamp::FromTicks(kLowest).ToSysTime(), sys_time<TimeStamp::Ticks>::min());
}

TEST(TimeStamp, IsAValueThatTellsTheTime) {
    const auto time = [] { return TimeStamp::FromSysTime(std::chrono::system_clock::from_time_t(std::time(nullptr))); };
    const TimeStamp before = time();
    TimeStamp now;
    now.SetToCurrentTime();
    EXPECT_TRUE(before <= now && now <= time());
    EXPECT_EQ(now.GetTicks() % TimeStamp::kTicksPerSecond, 0);
    EXPECT_EQ((std::unordered_set<TimeStamp>{now, TimeStamp(), now}.size()), 2U);
    EXPECT_EQ(testing::PrintToString(TimeStamp(2008, 2, 29, 12, 30, 45, 5)), "2008-02-29T12:30:45Z");
}

}  // namespace
