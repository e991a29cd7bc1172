// How a case is measured: which work lies inside the clock and which before it.
//
// One iteration goes once through all inputs of the case, so that the branch predictor meets them in
// turn and the clock is read rarely. A pass ahead of the clock lets objects that are reused grow and
// pages come in.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Allocations.h"
#include "Counting.h"

namespace Bench {

/// The names of all cases registered, "family/case/subject", in their order.
inline std::vector<std::string>& CaseNames() {
    static std::vector<std::string> names;
    return names;
}

/// The names of all growth cases registered, "family/operation/size", in their order.
inline std::vector<std::string>& GrowthNames() {
    static std::vector<std::string> names;
    return names;
}

/// How many calls or elements one iteration has; a figure is the time of one of them.
inline constexpr const char* kUnitsCounter = "units";
inline constexpr const char* kAllocationsCounter = "allocations";
inline constexpr const char* kKeptCounter = "kept bytes";
inline constexpr const char* kHeldCounter = "held bytes";

enum class Count { Time, TimeAndAllocations, TimeAndKeptBytes };

/// Runs `call` over `inputs` as often as `state` asks. The result is destroyed within the clock:
/// giving back what it holds belongs to what it costs.
template <class Inputs, class Call>
void Measure(benchmark::State& state, Inputs& inputs, Call call, Count count) {
    const auto pass = [&] {
        for (auto& input : inputs) {
            decltype(auto) result = call(input);
            benchmark::DoNotOptimize(result);
        }
    };
    pass();
    for ([[maybe_unused]] auto iteration : state) {
        ToggleCount();
        pass();
        ToggleCount();
    }
    const auto calls = static_cast<double>(inputs.size());
    state.counters[kUnitsCounter] = calls;
    if (count == Count::TimeAndAllocations) {
        const auto before = AllocationCount();
        pass();
        state.counters[kAllocationsCounter] = static_cast<double>(AllocationCount() - before) / calls;
    }
    if (count == Count::TimeAndKeptBytes) {
        const auto before = HeapBytes();
        pass();
        state.counters[kKeptCounter] = static_cast<double>(HeapBytes() - before) / calls;
    }
}

/// Registers what `run` does with the measuring library's state as "family/case/subject": as often as
/// time asks for, or a fixed number of iterations where what it uses up has an end. What comes back takes
/// further settings: UseRealTime() for work on several threads, measured by the clock on the wall.
template <class Run>
benchmark::internal::Benchmark* Register(const std::string& caseName, const std::string& subject, Run run,
                                         benchmark::IterationCount fixed = 0) {
    CaseNames().push_back(caseName + "/" + subject);
    auto* const registered = benchmark::RegisterBenchmark(CaseNames().back().c_str(), run);
    if (kCounts) {
        registered->Iterations(1);
    } else if (fixed != 0) {
        registered->Iterations(fixed);
    }
    return registered;
}

/// Adds `caseName` ("family/case") for a subject that takes the inputs, texts mostly, as they are. They
/// must outlive the run; each run works on its own copy of `call`.
template <class Input, class Call>
void AddCase(const std::string& caseName, const std::string& subject, const std::vector<Input>& inputs, Call call,
             Count count = Count::Time) {
    Register(caseName, subject,
             [&inputs, call, count](benchmark::State& state) { Measure(state, inputs, call, count); });
}

/// The same for a subject that needs something made of each input first, which `prepare` does outside
/// the clock: the text in the subject's own string type, or an object to work on.
template <class Input, class Prepare, class Call>
void AddPreparedCase(const std::string& caseName, const std::string& subject, const std::vector<Input>& inputs,
                     Prepare prepare, Call call, Count count = Count::Time, benchmark::IterationCount fixed = 0) {
    const auto run = [&inputs, prepare, call, count](benchmark::State& state) {
        std::vector<decltype(prepare(inputs.front()))> prepared;
        prepared.reserve(inputs.size());
        for (const Input& input : inputs) {
            prepared.push_back(prepare(input));
        }
        Measure(state, prepared, call, count);
    };
    Register(caseName, subject, run, fixed);
}

/// Adds a case that tells how many bytes an object holds, its own size included: `make` makes one of an input, and
/// many stay at a time.
template <class Input, class Make>
void AddHeldCase(const std::string& caseName, const std::string& subject, const std::vector<Input>& inputs, Make make) {
    constexpr std::size_t count = 10'000;
    const auto run = [&inputs, make](benchmark::State& state) {
        for ([[maybe_unused]] auto iteration : state) {
            const auto before = HeapBytes();
            ToggleCount();
            std::vector<decltype(make(inputs.front()))> objects;
            objects.reserve(count);
            for (std::size_t i = 0; i < count; ++i) {
                objects.push_back(make(inputs[i % inputs.size()]));
            }
            ToggleCount();
            state.counters[kHeldCounter] = static_cast<double>(HeapBytes() - before) / static_cast<double>(count);
        }
        state.counters[kUnitsCounter] = static_cast<double>(count);
    };
    Register(caseName, subject, run, 1);
}

/// Adds `operation` ("family/operation") to the growth table, once for each size. `prepare` takes the
/// size and gives what is to be called, everything that it works on being made; the figure is
/// for one element. Where instructions are counted, the sizes are the middle one and twice that.
template <class Prepare>
void AddGrowthCases(const std::string& operation, const std::vector<std::size_t>& sizes, Prepare prepare) {
    const std::size_t middle = sizes[sizes.size() / 2];
    for (const std::size_t size : kCounts ? std::vector{middle, 2 * middle} : sizes) {
        GrowthNames().push_back(operation + "/" + std::to_string(size));
        const auto run = [size, prepare](benchmark::State& state) {
            auto call = prepare(size);
            call();
            for ([[maybe_unused]] auto iteration : state) {
                ToggleCount();
                decltype(auto) result = call();
                benchmark::DoNotOptimize(result);
                ToggleCount();
            }
            state.counters[kUnitsCounter] = static_cast<double>(size);
        };
        auto* const registered = benchmark::RegisterBenchmark(GrowthNames().back().c_str(), run);
        if (kCounts) {
            registered->Iterations(1);
        }
    }
}

}  // namespace Bench
