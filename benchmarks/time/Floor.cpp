// The least that the results can cost: Neri and Schneider's arithmetic for fields known to be in their
// ranges, inlined, and a text known beforehand.
#include "Family.h"
#include "time/TimeFamily.h"

namespace Bench::Time {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::uint32_t kDaysTo1970 = 719'468;  // From 0000-03-01.

std::int64_t ToTicks(const Fields& f) {
    const std::uint32_t isEarly = f.month <= 2 ? 1 : 0;
    const std::uint32_t year = static_cast<std::uint32_t>(f.year) - isEarly;
    const std::uint32_t month = static_cast<std::uint32_t>(f.month) + 12 * isEarly;
    const std::uint32_t century = year / 100;
    const std::uint32_t day = 1461 * year / 4 - century + century / 4 + (979 * month - 2919) / 32 +
                              static_cast<std::uint32_t>(f.day) - 1 - kDaysTo1970;
    const int seconds = 3600 * f.hour + 60 * f.minute + f.second;
    return (std::int64_t{day} * 86'400 + seconds) * kTicksPerSecond + f.fraction;
}

Fields ToFields(std::int64_t ticks) {
    const auto count = static_cast<std::uint64_t>(ticks);
    const std::uint64_t allSeconds = count / kTicksPerSecond;
    const auto days = static_cast<std::uint32_t>(allSeconds / 86'400);
    const auto seconds = static_cast<std::uint32_t>(allSeconds % 86'400);
    const std::uint32_t quarters = 4 * (days + kDaysTo1970) + 3;
    const std::uint64_t scaled = std::uint64_t{2'939'745} * (quarters % 146'097 | 3);
    const std::uint32_t day = static_cast<std::uint32_t>(scaled) / 2'939'745 / 4;
    const std::uint32_t monthAndDay = 2141 * day + 197'913;
    const std::uint32_t isEarly = day >= 306 ? 1 : 0;
    return {static_cast<int>(100 * (quarters / 146'097) + (scaled >> 32) + isEarly),
            static_cast<int>((monthAndDay >> 16) - 12 * isEarly),
            static_cast<int>((monthAndDay & 0xFFFF) / 2141 + 1),
            static_cast<int>(seconds / 3600),
            static_cast<int>(seconds / 60 % 60),
            static_cast<int>(seconds % 60),
            static_cast<unsigned int>(count % kTicksPerSecond)};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddTimeCase(kToTicks, name, inputs.fields, inputs.ticks, kAsGiven, [](const Fields& f) { return ToTicks(f); });
    AddTimeCase(kToFields, name, inputs.ticks, inputs.fields, kAsGiven,
                [](std::int64_t ticks) { return ToFields(ticks); });
    AddTimeCase(kToText, name, inputs.texts, inputs.texts, kAsGiven, [](const std::string& text) { return text; });
}

const AddSubject add{{kFloor, AddCases}};

}  // namespace
}  // namespace Bench::Time
