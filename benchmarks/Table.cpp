// How results are shown.
#include "Table.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <sstream>
#include <string_view>

#include "Growth.h"
#include "TextCells.h"

namespace Bench {
namespace {

constexpr std::size_t kTimeWidth = 9;
constexpr std::size_t kRatioWidth = 6;
const std::string kDivider = " |";
constexpr const char* kAllocationsRow = "  allocations a call";
constexpr const char* kKeptRow = "  bytes kept a call";
constexpr const char* kHeldRow = "  bytes held an object";

std::string Describe(const Verdict& verdict) {
    const Goal& goal = verdict.goal;
    const bool isCount = goal.quantity == Quantity::Allocations;
    std::ostringstream text;
    text << "goal " << goal.most
         << (isCount ? (goal.of == kNobody ? " allocations" : " of the allocations of ") : " of ") << goal.of;
    if (goal.of == kBestPeer && !verdict.of.empty()) {
        text << " (" << verdict.of << ")";
    }
    if (!goal.ofCase.empty()) {
        text << " at " << goal.ofCase;
    }
    if (!verdict.value) {
        text << ": not measured";
    } else {
        // More digits where rounding alone decides on which side of the goal the value seems to be.
        const bool isClose = *verdict.value != goal.most && Number(*verdict.value, 2) == Number(goal.most, 2);
        text << ": " << Number(*verdict.value, isClose ? 4 : 2) << (verdict.IsMet() ? " ok" : " MISSED");
    }
    return text.str();
}

/// Who has which column.
struct Layout {
    Layout(const std::vector<CaseResult>& cases, const std::vector<std::string>& names)
        : subjects(Subjects(cases, names)), nameWidth(std::string_view(kAllocationsRow).size()) {
        for (const CaseResult& result : cases) {
            nameWidth = std::max(nameWidth, result.name.size());
        }
    }
    [[nodiscard]] std::size_t Width() const {
        std::size_t width = nameWidth;
        for (const std::string& subject : subjects) {
            width += subject == kMeasured ? kTimeWidth : kDivider.size() + TimeWidth(subject) + kRatioWidth;
        }
        return width;
    }
    /// Wider where the subject's name asks for it.
    [[nodiscard]] static std::size_t TimeWidth(const std::string& subject) {
        return subject == kMeasured ? kTimeWidth : std::max(kTimeWidth, subject.size() + 1);
    }

    std::vector<std::string> subjects;
    std::size_t nameWidth;
};

/// A line of the table with what stands behind it; without blanks at the end.
std::string Joined(const std::string& line, const std::string& behind, std::size_t width) {
    std::string joined = Left(line, width) + "  " + behind;
    joined.erase(joined.find_last_not_of(' ') + 1);
    return joined;
}

void PrintHead(std::ostream& out, const Layout& layout) {
    out << Left("ns a call", layout.nameWidth);
    for (const std::string& subject : layout.subjects) {
        if (subject == kMeasured) {
            out << Right(subject, kTimeWidth);
        } else {
            out << kDivider << Right(subject, Layout::TimeWidth(subject)) << Right("ratio", kRatioWidth);
        }
    }
    out << '\n';
}

std::string TimesLine(const CaseResult& result, const Layout& layout) {
    std::string line = Left(result.name, layout.nameWidth);
    for (const std::string& subject : layout.subjects) {
        const Figure* const figure = result.Find(subject);
        const std::size_t width = Layout::TimeWidth(subject);
        const std::string time = Right(figure == nullptr ? "-" : Number(figure->nanoseconds, 1), width);
        const auto ratio = result.RatioTo(subject);
        line += subject == kMeasured ? time : kDivider + time + Right(ratio ? Number(*ratio, 2) : "", kRatioWidth);
    }
    return line;
}

/// What `quantity` says of each subject, under `name`.
std::string CountsLine(const CaseResult& result, const Layout& layout, const char* name,
                       std::optional<double> Figure::*quantity, int decimals) {
    std::string line = Left(name, layout.nameWidth);
    for (const std::string& subject : layout.subjects) {
        const Figure* const figure = result.Find(subject);
        const bool isCounted = figure != nullptr && figure->*quantity;
        const std::size_t width = Layout::TimeWidth(subject);
        const std::string count = Right(isCounted ? Number(*(figure->*quantity), decimals) : "", width);
        line += subject == kMeasured ? count : kDivider + count + Right("", kRatioWidth);
    }
    return line;
}

/// Counts the goals that were met, missed and left open.
class Tally {
public:
    void Add(const std::vector<Verdict>& verdicts) {
        for (const Verdict& verdict : verdicts) {
            ++(verdict.IsMet() ? m_Met : verdict.value ? m_Missed : m_Open);
        }
    }
    void Print(std::ostream& out) const {
        out << "goals: " << m_Met << " met, " << m_Missed << " missed, " << m_Open << " not measured\n";
    }

private:
    int m_Met = 0;
    int m_Missed = 0;
    int m_Open = 0;
};

bool Has(const CaseResult& result, std::optional<double> Figure::*quantity) {
    return std::any_of(result.figures.begin(), result.figures.end(),
                       [quantity](const auto& entry) { return (entry.second.*quantity).has_value(); });
}

}  // namespace

void PrintTable(std::ostream& out, const Family& family, const std::vector<CaseResult>& cases,
                const std::vector<std::string>& names) {
    if (cases.empty()) {
        return;
    }
    const Layout layout(cases, names);
    PrintHead(out, layout);
    Tally tally;
    for (const CaseResult& result : cases) {
        std::vector<std::string> lines{TimesLine(result, layout)};
        if (Has(result, &Figure::allocations)) {
            lines.push_back(CountsLine(result, layout, kAllocationsRow, &Figure::allocations, 3));
        }
        if (Has(result, &Figure::keptBytes)) {
            lines.push_back(CountsLine(result, layout, kKeptRow, &Figure::keptBytes, 0));
        }
        if (Has(result, &Figure::heldBytes)) {
            lines.push_back(CountsLine(result, layout, kHeldRow, &Figure::heldBytes, 0));
        }
        const std::vector<Verdict> verdicts = Judge(result, cases, family.goals);
        lines.resize(std::max(lines.size(), verdicts.size()));
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string verdict = i < verdicts.size() ? Describe(verdicts[i]) : "";
            out << Joined(lines[i], verdict, layout.Width()) << '\n';
        }
        tally.Add(verdicts);
    }
    out << '\n';
    tally.Print(out);
}

void PrintNotes(std::ostream& out, const Family& family) {
    for (const std::string& note : family.notes()) {
        out << "- " << note << '\n';
    }
}

void PrintFootnote(std::ostream& out) {
    out << "- ratio: the time of " << kMeasured << " divided by that of the subject; below 1, " << kMeasured
        << " is faster.\n- Absolute times mean nothing across machines; only ratios from one run do.\n";
#ifndef NDEBUG
    out << "- Built with assertions: these figures measure nothing.\n";
#endif
}

nlohmann::json ToJson(const Family& family, const std::vector<CaseResult>& cases,
                      const std::vector<CaseResult>& growth) {
    nlohmann::json rows = nlohmann::json::array();
    for (const CaseResult& result : cases) {
        nlohmann::json row{
            {"name", result.name}, {"subjects", nlohmann::json::object()}, {"goals", nlohmann::json::array()}};
        for (const auto& [subject, figure] : result.figures) {
            nlohmann::json& cell = row["subjects"][subject];
            cell["median_ns"] = figure.nanoseconds;
            if (const auto ratio = result.RatioTo(subject)) {
                cell["ratio"] = *ratio;
            }
            if (figure.allocations) {
                cell["allocations"] = *figure.allocations;
            }
            if (figure.keptBytes) {
                cell["kept_bytes"] = *figure.keptBytes;
            }
            if (figure.heldBytes) {
                cell["held_bytes"] = *figure.heldBytes;
            }
        }
        for (const Verdict& verdict : Judge(result, cases, family.goals)) {
            nlohmann::json entry{{"quantity", verdict.goal.quantity == Quantity::Time ? "time" : "allocations"},
                                 {"of", verdict.of},
                                 {"most", verdict.goal.most},
                                 {"met", verdict.IsMet()}};
            if (!verdict.goal.ofCase.empty()) {
                entry["of_case"] = verdict.goal.ofCase;
            }
            entry["value"] = verdict.value ? nlohmann::json(*verdict.value) : nlohmann::json();
            row["goals"].push_back(std::move(entry));
        }
        rows.push_back(std::move(row));
    }
    return {{"family", family.name},
            {"cases", std::move(rows)},
            {"growth", GrowthToJson(growth)},
            {"notes", family.notes()}};
}

}  // namespace Bench
