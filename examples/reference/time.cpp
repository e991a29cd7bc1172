// A date and time as one number: made from fields and clocks, counted with, taken apart and printed.
#include <chrono>
#include <functional>
#include <iostream>

#include <Lum/TimeStamp.h>

int main() {
    // Half a second after noon, known when this is compiled.
    constexpr Lum::TimeStamp leapDay(2008, 2, 29, 12, 0, 0, 5);
    static_assert(leapDay.GetTicks() % Lum::TimeStamp::kTicksPerSecond == Lum::TimeStamp::kTicksPerSecond / 2);
    std::cout << leapDay << ' ' << leapDay.ToW3DTF() << '\n';

    int year, month, day, hour, minute, second;
    unsigned int ticks;
    leapDay.ToYMDHMSF(year, month, day, hour, minute, second, ticks);
    std::cout << day << '.' << month << '.' << year << ' ' << ticks << '\n';

    // A reminder a day, an hour and a minute later.
    const Lum::TimeStamp reminder =
        Lum::TimeStamp::FromTicks(leapDay.GetTicks() + Lum::TimeStamp::kTicksPerDay + Lum::TimeStamp::kTicksPerHour +
                                  Lum::TimeStamp::kTicksPerMinute);
    std::cout << reminder << ' ' << (leapDay < reminder) << (std::hash<Lum::TimeStamp>{}(reminder) != 0) << '\n';

    // To std::chrono and back.
    const auto later = reminder.ToSysTime() + Lum::TimeStamp::Ticks(Lum::TimeStamp::kTicksPerSecond);
    std::cout << Lum::TimeStamp::FromSysTime(later) << ' '
              << Lum::TimeStamp::FromSysTime(std::chrono::sys_seconds()).GetTicks() - Lum::TimeStamp::kTicksTo1970
              << '\n';

    Lum::TimeStamp now;
    now.SetToCurrentTime();
    std::cout << (now > leapDay) << ' ' << Lum::getNumDecimalDigits(2008) << '\n';
}
