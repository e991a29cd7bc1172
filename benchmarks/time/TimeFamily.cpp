// Puts the time family together: its inputs, its goals.
#include "time/TimeFamily.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <random>
#include <tuple>

#include "Family.h"

namespace Bench::Time {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;

/// Made by the C library alone, so that the measured one does not decide what is right.
Inputs MakeInputs() {
    constexpr int count = 1000;
    constexpr std::time_t secondsTo2100 = 4'102'444'800;
    std::vector<std::time_t> times;
    for (int i = 0; i < count; ++i) {
        times.push_back(secondsTo2100 / count * i + i * 7919 % 86'400);
    }
    std::mt19937 random(1);
    std::shuffle(times.begin(), times.end(), random);
    Inputs inputs;
    for (const std::time_t time : times) {
        std::tm t{};
        gmtime_r(&time, &t);
        const auto fraction = static_cast<unsigned int>(1'000'000 + random() % 9'000'000);
        inputs.fields.push_back({t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec, fraction});
        inputs.ticks.push_back(time * kTicksPerSecond + fraction);
        std::array<char, 32> text{};
        const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &t);
        inputs.texts.emplace_back(text.data(), size);
    }
    return inputs;
}

void AddCases() {
    static const Inputs inputs = MakeInputs();
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        const auto rank = [](const Subject& s) { return std::tuple(s.name != kMeasured, s.name != kFloor, s.name); };
        return rank(a) < rank(b);
    });
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, inputs);
    }
}

const AddFamily add{{"time",
                     [](CLI::App&) {},
                     AddCases,
                     {{kToTicks, 1, "std::chrono"}, {kToFields, 1, "std::chrono"}, {kToText, 0.25, "libc"}},
                     [] {
                         return std::vector<std::string>{
                             "time: 1000 times from 1970 to 2100, mixed. libc is gmtime_r, and strftime for the text; "
                             "its seconds have no fraction."};
                     }}};

}  // namespace

std::vector<Subject>& Subjects() {
    static std::vector<Subject> subjects;
    return subjects;
}

}  // namespace Bench::Time
