// How a case is measured: which work lies inside the clock and which before it.
//
// One iteration goes once through all inputs of the case, so that the branch predictor meets them in
// turn and the clock is read rarely. A pass ahead of the clock lets objects that are reused grow and
// pages come in.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Allocations.h"

namespace Bench {

/// The names of all cases registered, "family/case/subject", in their order.
inline std::vector<std::string>& CaseNames() {
    static std::vector<std::string> names;
    return names;
}

inline constexpr const char* kCallsCounter = "calls";
inline constexpr const char* kAllocationsCounter = "allocations";

enum class Count { Time, TimeAndAllocations };

/// Runs `call` over `inputs` as often as `state` asks. The result is destroyed within the clock:
/// giving back what it holds belongs to what it costs.
template <class Inputs, class Call>
void Measure(benchmark::State& state, const Inputs& inputs, Call call, Count count) {
    const auto pass = [&] {
        for (const auto& input : inputs) {
            decltype(auto) result = call(input);
            benchmark::DoNotOptimize(result);
        }
    };
    pass();
    for ([[maybe_unused]] auto iteration : state) {
        pass();
    }
    const auto calls = static_cast<double>(inputs.size());
    state.counters[kCallsCounter] = calls;
    if (count == Count::TimeAndAllocations) {
        const auto before = AllocationCount();
        pass();
        state.counters[kAllocationsCounter] = static_cast<double>(AllocationCount() - before) / calls;
    }
}

/// Registers what `run` does with the measuring library's state as "family/case/subject".
template <class Run>
void Register(const std::string& caseName, const std::string& subject, Run run) {
    CaseNames().push_back(caseName + "/" + subject);
    benchmark::RegisterBenchmark(CaseNames().back().c_str(), run);
}

/// Adds `caseName` ("family/case") for a subject that takes the texts as they are. The texts must
/// outlive the run; each run works on its own copy of `call`.
template <class Call>
void AddCase(const std::string& caseName, const std::string& subject, const std::vector<std::string>& texts, Call call,
             Count count = Count::Time) {
    Register(caseName, subject, [&texts, call, count](benchmark::State& state) { Measure(state, texts, call, count); });
}

/// The same for a subject that needs something made of each text first, which `prepare` does outside
/// the clock: the text in the subject's own string type, or an object to work on.
template <class Prepare, class Call>
void AddPreparedCase(const std::string& caseName, const std::string& subject, const std::vector<std::string>& texts,
                     Prepare prepare, Call call, Count count = Count::Time) {
    Register(caseName, subject, [&texts, prepare, call, count](benchmark::State& state) {
        std::vector<decltype(prepare(texts.front()))> inputs;
        inputs.reserve(texts.size());
        for (const std::string& text : texts) {
            inputs.push_back(prepare(text));
        }
        Measure(state, inputs, call, count);
    });
}

}  // namespace Bench
