// std::chrono: its calendar types.
#include <chrono>

#include "time/TimeFamily.h"

namespace Bench::Time {
namespace {

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

std::int64_t ToTicks(const Fields& f) {
    const std::chrono::sys_days day = std::chrono::year(f.year) / f.month / f.day;
    const std::chrono::sys_time<Ticks> time = day + std::chrono::hours(f.hour) + std::chrono::minutes(f.minute) +
                                              std::chrono::seconds(f.second) + Ticks(f.fraction);
    return time.time_since_epoch().count();
}

Fields ToFields(std::int64_t ticks) {
    const std::chrono::sys_time<Ticks> time{Ticks(ticks)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned int>(date.month())),
            static_cast<int>(static_cast<unsigned int>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count()),
            static_cast<unsigned int>(clock.subseconds().count())};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddTimeCase(kToTicks, name, inputs.fields, inputs.ticks, kAsGiven, [](const Fields& f) { return ToTicks(f); });
    AddTimeCase(kToFields, name, inputs.ticks, inputs.fields, kAsGiven,
                [](std::int64_t ticks) { return ToFields(ticks); });
}

const AddSubject add{{"std::chrono", AddCases}};

}  // namespace
}  // namespace Bench::Time
