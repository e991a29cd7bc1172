// The table of how times grow.
#include "Growth.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "TextCells.h"

namespace Bench {
namespace {

constexpr std::size_t kColumnWidth = 9;
constexpr std::string_view kTitle = "ns an element";

/// Every size that ran, the smallest first.
std::set<std::size_t> Sizes(const std::vector<CaseResult>& growth) {
    std::set<std::size_t> sizes;
    for (const CaseResult& result : growth) {
        for (const auto& [size, figure] : result.figures) {
            sizes.insert(std::stoul(size));
        }
    }
    return sizes;
}

}  // namespace

void PrintGrowth(std::ostream& out, const std::vector<CaseResult>& growth) {
    if (growth.empty()) {
        return;
    }
    std::size_t nameWidth = kTitle.size();
    for (const CaseResult& result : growth) {
        nameWidth = std::max(nameWidth, result.name.size());
    }
    const std::set<std::size_t> sizes = Sizes(growth);
    out << '\n' << Left(std::string(kTitle), nameWidth);
    for (const std::size_t size : sizes) {
        out << Right(std::to_string(size), kColumnWidth);
    }
    out << '\n';
    for (const CaseResult& result : growth) {
        out << Left(result.name, nameWidth);
        for (const std::size_t size : sizes) {
            const Figure* const figure = result.Find(std::to_string(size));
            out << Right(figure == nullptr ? "-" : Number(figure->nanoseconds, 2), kColumnWidth);
        }
        out << '\n';
    }
    out << '\n';
}

nlohmann::json GrowthToJson(const std::vector<CaseResult>& growth) {
    nlohmann::json rows = nlohmann::json::array();
    for (const CaseResult& result : growth) {
        nlohmann::json figures = nlohmann::json::array();
        for (const std::size_t size : Sizes({result})) {
            const double nanoseconds = result.Find(std::to_string(size))->nanoseconds;
            figures.push_back({{"elements", size}, {"median_ns_an_element", nanoseconds}});
        }
        rows.push_back({{"name", result.name}, {"figures", std::move(figures)}});
    }
    return rows;
}

}  // namespace Bench
