// Queries of ten pairs as forms send them, and what their keys are set to afterwards.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Inputs.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

constexpr std::size_t kQueries = 16;
constexpr std::size_t kPairs = 10;
constexpr std::size_t kRounds = 4;

// The space of a key is always written as an escape: not every subject reads a "+" back as one, and a
// key that is not found cannot be set.
constexpr std::array<std::string_view, 20> kKeys{
    "page",     "sort",      "from",     "until",      "category",        "first name", "session_id",
    "lang",     "max_price", "query",    "utm_medium", "offset",          "per page",   "country",
    "referrer", "colour",    "in_stock", "view",       "campaign.source", "postal_code"};

constexpr std::array<std::string_view, 27> kValues{
    "2023-05-14", "price",         "garden hose",        "ascending", "Portland",        "Jean Martin", "48213",
    "en-GB",      "north harbour", "1A530637289A03B071", "all",       "newsletter",      "1500",        "yes",
    "list",       "spring sale",   "used, like new",     "b7f3-44c1", "www.example.com", "12045",       "none",
    "light blue", "relevance",     "Anna of the Valley", "52.5200",   "mobile",          "one & two"};

// Not a divisor of either count, so that the texts differ from query to query.
constexpr std::size_t kKeyStep = 3;
constexpr std::size_t kValueStep = 5;

/// Forms write a space as "+", scripts as an escape.
std::string AsForm(std::string_view text) {
    std::string form;
    for (const char c : text) {
        form += c == ' ' ? "+" : Escaped({&c, 1});
    }
    return form;
}

QueryText MakeQuery(std::size_t number) {
    QueryText query{"https://shop.example.com/products/search", {}};
    for (std::size_t i = 0; i < kPairs; ++i) {
        const std::string_view key = kKeys[(number * 7 + i * kKeyStep) % kKeys.size()];
        const std::string_view value = kValues[(number * 11 + i * kValueStep) % kValues.size()];
        query.url += (i == 0 ? '?' : '&') + Escaped(key) + '=' + (i % 2 == 0 ? AsForm(value) : Escaped(value));
        query.pairs.emplace_back(key, value);
    }
    return query;
}

}  // namespace

std::vector<QueryText> QueryTexts() {
    std::vector<QueryText> queries;
    for (std::size_t i = 0; i < kQueries; ++i) {
        queries.push_back(MakeQuery(i));
    }
    return queries;
}

std::vector<QueryPair> Changes(const QueryText& query) {
    std::vector<QueryPair> changes;
    for (std::size_t i = 0; i < kRounds * query.pairs.size(); ++i) {
        const std::string& key = query.pairs[i * kKeyStep % query.pairs.size()].first;
        changes.emplace_back(key, kValues[i * kValueStep % kValues.size()]);
    }
    return changes;
}

}  // namespace Bench::Uri
