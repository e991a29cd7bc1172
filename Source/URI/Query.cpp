// The query as pairs of key and value.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/URI.h>

#include "Source/Base/ByteSearch.h"
#include "Source/Base/Lengths.h"
#include "Source/URI/Escaping.h"

namespace Lum {

using namespace Internal;

namespace {

/// Walks over the pairs of an escaped query. There is a pair, perhaps an empty one, before every "&". Behind the
/// last "&" there is one only if the text is not empty.
class Pairs {
public:
    explicit Pairs(std::string_view query) noexcept : m_Rest(query) {}

    [[nodiscard]] bool Next() noexcept {
        if (m_Rest.empty()) {
            return false;
        }
        const std::size_t end = std::min(FindFirst(m_Rest, '&'), m_Rest.size());
        const std::string_view pair = m_Rest.substr(0, end);
        m_Rest.remove_prefix(std::min(end + 1, m_Rest.size()));
        const std::size_t divider = std::min(FindFirst(pair, '='), pair.size());
        m_Key = pair.substr(0, divider);
        m_Value = pair.substr(std::min(divider + 1, pair.size()));
        return true;
    }
    [[nodiscard]] std::string_view Key() const noexcept { return m_Key; }
    [[nodiscard]] std::string_view Value() const noexcept { return m_Value; }

private:
    std::string_view m_Rest;
    std::string_view m_Key;
    std::string_view m_Value;
};

/// Reads "+" as a space before it decodes escapes, so that an escaped "+" stays a "+".
std::string QueryUnescaped(std::string text) {
    std::replace(text.begin(), text.end(), '+', ' ');
    return UnescapeText(std::move(text));
}

using PairMap = std::map<std::string, std::string>;

/// Appends "key=value", after a "&" if it is not the first pair.
void AppendPair(std::string& query, std::string_view key, std::string_view value) {
    if (!query.empty()) {
        query += '&';
    }
    AppendEscaped(query, key, URIqueryexcludedBitMap);
    query += '=';
    AppendEscaped(query, value, URIqueryexcludedBitMap);
}

}  // namespace

URI::StringProxy URI::QueryEscape(StringProxy text) {
    return FastEscapeChars(std::move(text.m_Text), URIqueryexcludedBitMap);
}

URI::StringProxy URI::QueryUnescape(StringProxy text) { return QueryUnescaped(std::move(text.m_Text)); }

void URI::GetQueryByMap(PairMap& out) const {
    out.clear();
    for (Pairs pairs(m_Query); pairs.Next();) {
        out.insert_or_assign(QueryUnescaped(std::string(pairs.Key())), QueryUnescaped(std::string(pairs.Value())));
    }
}

void URI::SetQueryByMap(const PairMap& in) {
    std::uint64_t size = 0;
    for (const auto& [key, value] : in) {
        size += key.size() + value.size() + 2;
    }
    std::string query;
    ReserveFor(query, size);
    for (const auto& [key, value] : in) {
        AppendPair(query, key, value);
    }
    SetQuery(std::move(query), false);
}

bool URI::GetQueryValue(StringProxy key, StringRefProxy value) const {
    bool found = false;
    std::string_view last;
    for (Pairs pairs(m_Query); pairs.Next();) {
        if (QueryUnescaped(std::string(pairs.Key())) == key.m_Text) {
            found = true;
            last = pairs.Value();
        }
    }
    if (found) {
        value = QueryUnescaped(std::string(last));
    }
    return found;
}

void URI::SetQueryValue(StringProxy key, StringProxy value) {
    // The result is that of a map of all pairs, without the cost of one.
    std::vector<std::pair<std::string, std::string>> all;
    for (Pairs pairs(m_Query); pairs.Next();) {
        all.emplace_back(QueryUnescaped(std::string(pairs.Key())), QueryUnescaped(std::string(pairs.Value())));
    }
    all.emplace_back(std::move(key.m_Text), std::move(value.m_Text));
    const auto byKey = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::is_sorted(all.begin(), std::prev(all.end()), byKey)) {
        std::stable_sort(all.begin(), std::prev(all.end()), byKey);
    }
    // In a query that was written here before, all pairs but the new one are already sorted.
    std::inplace_merge(all.begin(), std::prev(all.end()), all.end(), byKey);
    std::string query;
    ReserveFor(query, std::uint64_t{m_Query.size()} + all.size() + 16);
    for (auto pair = all.begin(); pair != all.end(); ++pair) {
        // Of equal keys the last counts.
        if (const auto next = std::next(pair); next == all.end() || next->first != pair->first) {
            AppendPair(query, pair->first, pair->second);
        }
    }
    SetQuery(std::move(query), false);
}

}  // namespace Lum
