// The frame of lum-counts: runs each case once, so that callgrind dumps its instructions under its name.
//
// The instruction set is fixed to one that every machine has, under valgrind too: the counts in
// counts.txt then hold on all of them.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <vector>

#include "Case.h"
#include "Counting.h"
#include "Family.h"
#include "Source/Base/Cpu.h"

namespace {

/// After each case, dumps what was collected as "family/case/subject<TAB>calls".
class Dumper : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const auto calls = static_cast<long>(run.counters.at(Bench::kUnitsCounter).value);
            const std::string text = run.run_name.function_name + '\t' + std::to_string(calls);
            CALLGRIND_DUMP_STATS_AT(text.c_str());
        }
    }
};

int Run() {
    if (Lum::Internal::ForceCpu(Lum::Internal::CpuTier::kSse41) != Lum::Internal::CpuTier::kSse41) {
        std::cerr << "lum-counts: this machine has no SSE4.1, which the counts are of\n";
        return 1;
    }
    for (const Bench::Family& family : Bench::Families()) {
        family.addCases();
    }
    // What several threads do takes turns as it likes, and what is kept depends on the heap that earlier cases left.
    std::vector<std::string> flags{"lum-counts", "--benchmark_filter=-(thread| kept)"};
    std::vector<char*> arguments;
    for (std::string& flag : flags) {
        arguments.push_back(flag.data());
    }
    auto count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    CALLGRIND_START_INSTRUMENTATION;
    Dumper dumper;
    benchmark::RunSpecifiedBenchmarks(&dumper);
    benchmark::Shutdown();
    return 0;
}

}  // namespace

int main() {
    if (RUNNING_ON_VALGRIND == 0) {
        std::cerr << "lum-counts: counts only under callgrind; see counts/counts.sh\n";
        return 2;
    }
    try {
        return Run();
    } catch (const std::exception& error) {
        std::cerr << "lum-counts: " << error.what() << '\n';
        return 1;
    }
}
