// The program's frame: reads the arguments, runs the cases that were asked for, shows the results.
#include <benchmark/benchmark.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "Case.h"
#include "Family.h"
#include "Growth.h"
#include "Results.h"
#include "Table.h"

namespace {

struct Settings {
    std::string json;
    std::string filter;
    int repetitions = 5;
    double minTime = 0.2;
};

/// Hands the settings to the measuring library as its own flags: set case by case they would go into
/// the names, which the filter would then have to match.
void Configure(const Settings& settings) {
    std::vector<std::string> flags{
        "lum-bench",
        // Whatever slows the machine down for a while then meets all subjects alike.
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_repetitions=" + std::to_string(settings.repetitions),
        "--benchmark_min_time=" + std::to_string(settings.minTime),
    };
    if (!settings.filter.empty()) {
        flags.push_back("--benchmark_filter=" + settings.filter);
    }
    std::vector<char*> arguments;
    for (std::string& flag : flags) {
        arguments.push_back(flag.data());
    }
    auto count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
}

/// The cases that belong to `family`.
std::vector<Bench::CaseResult> Select(const Bench::Family& family, std::vector<Bench::CaseResult> cases) {
    std::erase_if(cases, [&](const auto& result) { return !result.name.starts_with(family.name + "/"); });
    return cases;
}

/// What has to be known of a run to compare it with another.
nlohmann::json Circumstances(const Settings& settings) {
    std::string processor = "unknown", line;
    std::string flags;
    for (std::ifstream file("/proc/cpuinfo"); std::getline(file, line);) {
        const std::string value = line.substr(std::min(line.find(": ") + 2, line.size()));
        processor = line.starts_with("model name") ? value : processor;
        flags = line.starts_with("flags") ? ' ' + value + ' ' : flags;
    }
    const auto has = [&](const char* flag) { return flags.find(flag) != std::string::npos; };
    const std::time_t now = std::time(nullptr);
    std::tm date{};
    gmtime_r(&now, &date);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d", &date);
    return {{"repetitions", settings.repetitions},
            {"min_time", settings.minTime},
            {"date", text.data()},
            {"processor", processor},
            {"cores", std::thread::hardware_concurrency()},
            {"instructions", has(" avx512_vbmi2 ") ? "AVX-512 with VBMI2"
                             : has(" avx512bw ")   ? "AVX-512 without VBMI2, so that AVX2 is used"
                             : has(" avx2 ")       ? "AVX2"
                                                   : "no AVX2"},
#ifdef __clang__
            {"compiler", __VERSION__}};
#else
            {"compiler", "g++ " __VERSION__}};
#endif
}

bool WriteJson(const Settings& settings, const std::vector<Bench::CaseResult>& cases,
               const std::vector<Bench::CaseResult>& growth) {
    nlohmann::json families = nlohmann::json::array();
    for (const Bench::Family& family : Bench::Families()) {
        families.push_back(Bench::ToJson(family, Select(family, cases), Select(family, growth)));
    }
    std::ofstream file(settings.json);
    file << nlohmann::json{{"run", Circumstances(settings)}, {"families", families}}.dump(2) << '\n';
    file.close();
    return file.good();
}

int Run(const Settings& settings) {
    for (const Bench::Family& family : Bench::Families()) {
        family.addCases();
    }
    Configure(settings);
    Bench::Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    benchmark::Shutdown();

    const std::vector<std::string>& names = Bench::CaseNames();
    const std::vector<Bench::CaseResult> cases = collector.Cases(names);
    const std::vector<Bench::CaseResult> growth = collector.Cases(Bench::GrowthNames());
    if (cases.empty() && growth.empty()) {
        std::cerr << "lum-bench: no case matches\n";
        return 1;
    }
    for (const Bench::Family& family : Bench::Families()) {
        const auto ownCases = Select(family, cases);
        const auto ownGrowth = Select(family, growth);
        Bench::PrintTable(std::cout, family, ownCases, names);
        Bench::PrintGrowth(std::cout, ownGrowth);
        if (!ownCases.empty() || !ownGrowth.empty()) {
            Bench::PrintNotes(std::cout, family);
        }
    }
    Bench::PrintFootnote(std::cout);
    if (!settings.json.empty() && !WriteJson(settings, cases, growth)) {
        std::cerr << "lum-bench: cannot write " << settings.json << '\n';
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Measures Lum against other libraries that do the same work"};
    Settings settings;
    app.add_option("--json", settings.json, "Write the results to this file as JSON");
    app.add_option("--filter", settings.filter, "Run only the cases whose family/case/subject this expression matches");
    app.add_option("--repetitions", settings.repetitions, "How often each case runs; the median counts")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--min-time", settings.minTime, "How many seconds one repetition of a case takes at least")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    for (const Bench::Family& family : Bench::Families()) {
        family.addOptions(app);
    }
    CLI11_PARSE(app, argc, argv);
    try {
        return Run(settings);
    } catch (const std::exception& error) {
        std::cerr << "lum-bench: " << error.what() << '\n';
        return 1;
    }
}
