// Collects what was measured and judges it: the median of the repetitions, ratios, goals.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Family.h"

namespace Bench {

struct Figure {
    double nanoseconds = 0;  ///< A call or, in a growth case, an element; processor time.
    std::optional<double> allocations;
    std::optional<double> keptBytes;  ///< A call; never given back.
    std::optional<double> heldBytes;  ///< An object, with all that it refers to.
};

/// A case with the figures of every subject that ran, or an operation with those of every size.
struct CaseResult {
    std::string name;  ///< "family/case" or "family/operation"
    std::map<std::string, Figure> figures;

    [[nodiscard]] const Figure* Find(const std::string& subject) const;
    /// The measured subject's time divided by that of `subject`; nothing where one did not run.
    [[nodiscard]] std::optional<double> RatioTo(const std::string& subject) const;
    /// The fastest of the peers, "" where none ran.
    [[nodiscard]] std::string BestPeer() const;
};

struct Verdict {
    Goal goal;
    std::string of;               ///< The subject compared with, found out where the goal leaves it open.
    std::optional<double> value;  ///< What was reached; nothing where it was not measured.
    [[nodiscard]] bool IsMet() const { return value && *value <= goal.most; }
};

/// Takes the runs in whatever order they come.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The cases that ran, in the order of `names` ("family/case/subject" or "family/operation/size").
    [[nodiscard]] std::vector<CaseResult> Cases(const std::vector<std::string>& names) const;

private:
    std::map<std::string, std::vector<double>> m_Times;
    std::map<std::string, double> m_Allocations;
    std::map<std::string, double> m_KeptBytes;
    std::map<std::string, double> m_HeldBytes;
};

/// The family's subjects that ran: the measured one, the floor, then the peers in the order of `names`.
[[nodiscard]] std::vector<std::string> Subjects(const std::vector<CaseResult>& cases,
                                                const std::vector<std::string>& names);
/// One verdict for each of the goals that `result`, one of `cases`, has.
[[nodiscard]] std::vector<Verdict> Judge(const CaseResult& result, const std::vector<CaseResult>& cases,
                                         const std::vector<Goal>& goals);

}  // namespace Bench
