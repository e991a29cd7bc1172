// Collects what was measured and judges it.
#include "Results.h"

#include <algorithm>
#include <cstddef>

#include "Case.h"

namespace Bench {
namespace {

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::optional<double> TimeRatio(const Figure* figure, const Figure* other) {
    if (figure == nullptr || other == nullptr) {
        return std::nullopt;
    }
    return figure->nanoseconds / other->nanoseconds;
}

std::optional<double> AllocationRatio(const Figure* figure, const Figure* other) {
    if (figure == nullptr || other == nullptr || !figure->allocations || !other->allocations) {
        return std::nullopt;
    }
    // None is as few as none, whatever the quotient.
    return *figure->allocations == 0 ? 0 : *figure->allocations / *other->allocations;
}

/// The case that a goal of `result` compares with; null where it did not run.
const CaseResult* Opposite(const CaseResult& result, const std::vector<CaseResult>& cases, const Goal& goal) {
    if (goal.ofCase.empty()) {
        return &result;
    }
    const auto found = std::find_if(cases.begin(), cases.end(), [&](const auto& c) { return c.name == goal.ofCase; });
    return found == cases.end() ? nullptr : &*found;
}

}  // namespace

const Figure* CaseResult::Find(const std::string& subject) const {
    const auto found = figures.find(subject);
    return found == figures.end() ? nullptr : &found->second;
}

std::optional<double> CaseResult::RatioTo(const std::string& subject) const {
    return TimeRatio(Find(kMeasured), Find(subject));
}

std::string CaseResult::BestPeer() const {
    std::string best;
    for (const auto& [subject, figure] : figures) {
        const bool isPeer = subject != kMeasured && subject != kFloor;
        if (isPeer && (best.empty() || figure.nanoseconds < figures.at(best).nanoseconds)) {
            best = subject;
        }
    }
    return best;
}

bool Collector::ReportContext(const Context& /*context*/) { return true; }

void Collector::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        // Processor time: another program on the machine disturbs it less than the clock on the wall.
        const std::string& name = run.run_name.function_name;
        const bool isByWall = !run.run_name.time_type.empty();
        const double time = isByWall ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        m_Times[name].push_back(time / run.counters.at(kUnitsCounter).value);
        if (const auto found = run.counters.find(kAllocationsCounter); found != run.counters.end()) {
            m_Allocations[name] = found->second.value;
        }
        if (const auto found = run.counters.find(kKeptCounter); found != run.counters.end()) {
            m_KeptBytes[name] = found->second.value;
        }
        if (const auto found = run.counters.find(kHeldCounter); found != run.counters.end()) {
            // Pools that earlier repetitions have filled give their memory again.
            m_HeldBytes[name] = std::max(m_HeldBytes[name], found->second.value);
        }
    }
}

std::vector<CaseResult> Collector::Cases(const std::vector<std::string>& names) const {
    std::vector<CaseResult> cases;
    for (const std::string& name : names) {
        const auto times = m_Times.find(name);
        if (times == m_Times.end()) {
            continue;
        }
        const std::size_t divider = name.rfind('/');
        const std::string caseName = name.substr(0, divider);
        auto result = std::find_if(cases.begin(), cases.end(), [&](const auto& c) { return c.name == caseName; });
        if (result == cases.end()) {
            result = cases.insert(cases.end(), CaseResult{caseName, {}});
        }
        Figure& figure = result->figures[name.substr(divider + 1)];
        figure.nanoseconds = Median(times->second);
        if (const auto found = m_Allocations.find(name); found != m_Allocations.end()) {
            figure.allocations = found->second;
        }
        if (const auto found = m_KeptBytes.find(name); found != m_KeptBytes.end()) {
            figure.keptBytes = found->second;
        }
        if (const auto found = m_HeldBytes.find(name); found != m_HeldBytes.end()) {
            figure.heldBytes = found->second;
        }
    }
    return cases;
}

std::vector<std::string> Subjects(const std::vector<CaseResult>& cases, const std::vector<std::string>& names) {
    std::vector<std::string> subjects{kMeasured, kFloor};
    for (const std::string& name : names) {
        const std::string subject = name.substr(name.rfind('/') + 1);
        if (std::find(subjects.begin(), subjects.end(), subject) == subjects.end()) {
            subjects.push_back(subject);
        }
    }
    const auto didNotRun = [&](const std::string& subject) {
        return std::none_of(cases.begin(), cases.end(), [&](const auto& c) { return c.Find(subject) != nullptr; });
    };
    std::erase_if(subjects, didNotRun);
    return subjects;
}

std::vector<Verdict> Judge(const CaseResult& result, const std::vector<CaseResult>& cases,
                           const std::vector<Goal>& goals) {
    std::vector<Verdict> verdicts;
    for (const Goal& goal : goals) {
        if (goal.caseName != result.name) {
            continue;
        }
        const CaseResult* const opposite = Opposite(result, cases, goal);
        const bool isOpen = goal.of == kBestPeer && opposite != nullptr;
        Verdict verdict{goal, isOpen ? opposite->BestPeer() : goal.of, std::nullopt};
        const Figure* const measured = result.Find(kMeasured);
        const Figure* const other = opposite == nullptr ? nullptr : opposite->Find(verdict.of);
        if (goal.quantity == Quantity::Time) {
            verdict.value = TimeRatio(measured, other);
        } else if (goal.of != kNobody) {
            verdict.value = AllocationRatio(measured, other);
        } else if (measured != nullptr) {
            verdict.value = measured->allocations;
        }
        verdicts.push_back(std::move(verdict));
    }
    return verdicts;
}

}  // namespace Bench
