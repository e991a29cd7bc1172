// The query as pairs of key and value.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/URI.h>

#include "Source/Base/Block16.h"
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
        const std::size_t size = m_Rest.size();
        if (size == 0) {
            return false;
        }
        // The first "&" and the first "=" before it, in one pass.
        const BlockedText<Block16> blocks(m_Rest);
        std::size_t end = size;
        std::size_t divider = size;
        for (std::size_t i = 0; i < size && end == size; i += blocks.kStep) {
            const auto part = blocks.At(i);
            const std::uint32_t ends = part.block.Equals('&') & part.fresh;
            const std::uint32_t dividers = part.block.Equals('=') & part.fresh & (ends - 1) & ~ends;
            if (divider == size && dividers != 0) {
                divider = part.start + static_cast<std::size_t>(std::countr_zero(dividers));
            }
            if (ends != 0) {
                end = part.start + static_cast<std::size_t>(std::countr_zero(ends));
            }
        }
        const std::string_view pair = m_Rest.substr(0, end);
        divider = std::min(divider, end);
        m_Key = pair.substr(0, divider);
        m_Value = pair.substr(std::min(divider + 1, end));
        m_Rest.remove_prefix(std::min(end + 1, size));
        return true;
    }
    [[nodiscard]] std::string_view Key() const noexcept { return m_Key; }
    [[nodiscard]] std::string_view Value() const noexcept { return m_Value; }

private:
    std::string_view m_Rest;
    std::string_view m_Key;
    std::string_view m_Value;
};

/// Whether a key or value reads as it is stored.
bool IsPlain(std::string_view text) noexcept {
    const BlockedText<Block16> blocks(text);
    for (std::size_t i = 0; i < text.size(); i += blocks.kStep) {
        if (blocks.At(i).block.EqualsAny<'%', '+'>() != 0) {
            return false;
        }
    }
    return true;
}

/// Reads "+" as a space before it decodes escapes, so that an escaped "+" stays a "+".
std::string QueryUnescaped(std::string text) {
    // Written in every case, so that the compiler makes vector code of it.
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c == '+' ? ' ' : c; });
    return UnescapeText(std::move(text));
}

using PairMap = std::map<std::string, std::string>;

/// A key or value read unescaped.
std::string QueryUnescaped(std::string_view stored) {
    return IsPlain(stored) ? std::string(stored) : QueryUnescaped(std::string(stored));
}

/// Appends "key=", after a "&" if it is not the first.
void AppendKey(std::string& query, std::string_view key) {
    if (!query.empty()) {
        query += '&';
    }
    AppendEscaped(query, key, URIqueryexcludedBitMap);
    query += '=';
}

}  // namespace

URI::StringProxy URI::QueryEscape(StringProxy text) {
    return FastEscapeChars(std::move(text.m_Text), URIqueryexcludedBitMap);
}

URI::StringProxy URI::QueryUnescape(StringProxy text) { return QueryUnescaped(std::move(text.m_Text)); }

void URI::GetQueryByMap(PairMap& out) const {
    out.clear();
    for (Pairs pairs(m_Query); pairs.Next();) {
        out.insert_or_assign(QueryUnescaped(pairs.Key()), QueryUnescaped(pairs.Value()));
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
        AppendKey(query, key);
        AppendEscaped(query, value, URIqueryexcludedBitMap);
    }
    SetQuery(std::move(query), false);
}

bool URI::GetQueryValue(StringProxy key, StringRefProxy value) const {
    bool found = false;
    std::string_view last;
    for (Pairs pairs(m_Query); pairs.Next();) {
        if (IsPlain(pairs.Key()) ? pairs.Key() == key.m_Text : QueryUnescaped(pairs.Key()) == key.m_Text) {
            found = true;
            last = pairs.Value();
        }
    }
    if (found) {
        value = QueryUnescaped(last);
    }
    return found;
}

void URI::SetQueryValue(StringProxy key, StringProxy value) {
    // The result is that of a map of all pairs, without the cost of one. Most texts are read and written as they are.
    struct Pair {
        std::string_view key;    ///< Unescaped.
        std::string_view value;  ///< Escaped as it is to be written.
    };
    constexpr const EscapeSet& escaped = URIqueryexcludedBitMap;
    std::vector<Pair> all;
    all.reserve(static_cast<std::size_t>(std::count(m_Query.begin(), m_Query.end(), '&')) + 2);
    std::list<std::string> made;
    const auto keep = [&](std::string text) -> std::string_view { return made.emplace_back(std::move(text)); };
    for (Pairs pairs(m_Query); pairs.Next();) {
        Pair& pair = all.emplace_back(Pair{pairs.Key(), pairs.Value()});
        if (HasMember(pair.key, escaped)) {
            pair.key = keep(QueryUnescaped(pair.key));
        }
        if (!IsEscapedBy(pair.value, escaped)) {
            pair.value = keep(FastEscapeChars(QueryUnescaped(pair.value), escaped));
        }
    }
    const auto byKey = [](const Pair& a, const Pair& b) { return a.key < b.key; };
    if (!std::is_sorted(all.begin(), all.end(), byKey)) {
        std::stable_sort(all.begin(), all.end(), byKey);
    }
    value.m_Text = FastEscapeChars(std::move(value.m_Text), escaped);
    const Pair changed{key.m_Text, value.m_Text};
    all.insert(std::upper_bound(all.begin(), all.end(), changed, byKey), changed);
    std::string query;
    ReserveFor(query, std::uint64_t{m_Query.size()} + changed.key.size() + changed.value.size() + all.size());
    for (auto pair = all.begin(); pair != all.end(); ++pair) {
        // Of equal keys the last counts.
        if (const auto next = std::next(pair); next == all.end() || next->key != pair->key) {
            AppendKey(query, pair->key);
            query += pair->value;
        }
    }
    SetQuery(std::move(query), false);
}

}  // namespace Lum
