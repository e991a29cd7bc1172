// The C library: gmtime_r and strftime, of whole seconds.
#include <array>
#include <ctime>

#include "time/TimeFamily.h"

namespace Bench::Time {
namespace {

struct Whole {
    std::time_t seconds;
    unsigned int fraction;
};

Whole Prepare(std::int64_t ticks) {
    return {static_cast<std::time_t>(ticks / 10'000'000), static_cast<unsigned int>(ticks % 10'000'000)};
}

Fields ToFields(const Whole& time) {
    std::tm t{};
    gmtime_r(&time.seconds, &t);
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec, time.fraction};
}

std::string ToText(const Whole& time) {
    std::tm t{};
    gmtime_r(&time.seconds, &t);
    std::array<char, 32> text;
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &t)};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddTimeCase(kToFields, name, inputs.ticks, inputs.fields, Prepare,
                [](const Whole& time) { return ToFields(time); });
    AddTimeCase(kToText, name, inputs.ticks, inputs.texts, Prepare, [](const Whole& time) { return ToText(time); });
}

const AddSubject add{{"libc", AddCases}};

}  // namespace
}  // namespace Bench::Time
