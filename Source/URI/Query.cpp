// The query as pairs of key and value.
#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/ByteSearch.h"
#include "Source/URI/Escaping.h"

namespace Lum {
namespace {

/// Walks over the pairs of an escaped query. Between two "&" there is a pair, be it empty; behind the
/// last one there is none.
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

std::string Unescaped(std::string text) {
    // First, so that an escaped "+" stays one.
    std::replace(text.begin(), text.end(), '+', ' ');
    return UnescapeText(std::move(text));
}

}  // namespace

URI::StringProxy URI::QueryEscape(StringProxy text) { return FastEscapeChars(std::move(text.m_Text), kQueryExcluded); }

URI::StringProxy URI::QueryUnescape(StringProxy text) { return Unescaped(std::move(text.m_Text)); }

void URI::GetQueryByMap(std::map<std::string, std::string>& out) const {
    out.clear();
    for (Pairs pairs(m_Query); pairs.Next();) {
        out.insert_or_assign(Unescaped(std::string(pairs.Key())), Unescaped(std::string(pairs.Value())));
    }
}

void URI::SetQueryByMap(const std::map<std::string, std::string>& in) {
    std::string query;
    for (const auto& [key, value] : in) {
        if (!query.empty()) {
            query += '&';
        }
        query += FastEscapeChars(key, kQueryExcluded);
        query += '=';
        query += FastEscapeChars(value, kQueryExcluded);
    }
    SetQuery(std::move(query), false);
}

bool URI::GetQueryValue(StringProxy key, StringRefProxy value) const {
    bool found = false;
    std::string_view last;
    for (Pairs pairs(m_Query); pairs.Next();) {
        if (Unescaped(std::string(pairs.Key())) == key.m_Text) {
            found = true;
            last = pairs.Value();
        }
    }
    if (found) {
        value = Unescaped(std::string(last));
    }
    return found;
}

void URI::SetQueryValue(StringProxy key, StringProxy value) {
    std::map<std::string, std::string> pairs;
    GetQueryByMap(pairs);
    pairs.insert_or_assign(std::move(key.m_Text), std::move(value.m_Text));
    SetQueryByMap(pairs);
}

}  // namespace Lum
