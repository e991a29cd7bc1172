// The pairs of a query, read and edited where they stand.
//
// URI::SetQueryByMap and SetQueryValue write a query anew: sorted, each key once, in one form of escaping. Where a
// query belongs to somebody else, a signed link say, nothing may change but what is meant to. A QueryView shows the
// pairs as stored, in their order, with duplicates, empty pairs and whatever escapes they have; a QueryEdit changes one
// of them and leaves every other byte as it was:
//
//     Lum::URI uri("http://h/?b=%7e&a=1&&b");
//     Lum::QueryEdit edit(uri);
//     edit.Set("a", "x y");
//     edit.PutInto(uri);             // http://h/?b=%7e&a=x%20y&&b
//
// Every "&" divides two pairs, so that "a&" has two, the second empty; an empty query has none. The first "=" of a
// pair divides key and value. Keys and values are compared and given back as URI::QueryUnescape reads them and written
// as URI::QueryEscape writes them.
//
// Any bytes are accepted. Each operation is linear in the length of the query. Nothing throws but std::bad_alloc, which
// leaves the query as it was. Threads: as for std::string_view and std::string.
#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/PieceText.h>
#include <Lum/URI.h>

namespace Lum {

namespace Internal {
/// The stored query of a URI.
struct StoredQuery : URI {
    static constexpr std::string URI::*kMember = &StoredQuery::m_Query;

    static const std::string& Of(const URI& uri) noexcept { return uri.*kMember; }
    static const std::string& Of(const std::string& text) noexcept { return text; }
};
}  // namespace Internal

/// A pair as it stands in a query. The texts are views of the query.
struct QueryPair {
    constexpr explicit QueryPair(std::string_view stored) noexcept
        : text(stored), key(stored.substr(0, stored.find('='))), hasValue(key.size() != stored.size()) {
        value = stored.substr(hasValue ? key.size() + 1 : stored.size());
    }

    /// The key unescaped.
    [[nodiscard]] std::string GetKey() const { return URI::QueryUnescape(key); }
    /// The value unescaped.
    [[nodiscard]] std::string GetValue() const { return URI::QueryUnescape(value); }

    std::string_view text;   ///< The whole pair.
    std::string_view key;    ///< All before the first "=".
    std::string_view value;  ///< All behind it, "" if there is none.
    bool hasValue;           ///< Whether there is a "=": "a=" and "a" differ in it.
};

/// The pairs of a query as a forward range of QueryPair. A view: the query must outlive it unchanged.
class QueryView : public Internal::PieceView<QueryPair, '&'> {
public:
    static constexpr std::size_t npos = std::string_view::npos;  ///< What Find gives for "none".

    /// Of the text of a query, without its "?".
    constexpr explicit QueryView(std::string_view query LUM_LIFETIMEBOUND) noexcept : PieceView(query) {}
    /// Of a URI's query, until the URI changes, or of a string. A temporary one is refused by compilers that see it.
    template <class Owner>
    requires std::derived_from<Owner, URI> || std::same_as<Owner, std::string>
    explicit QueryView(const Owner& owner LUM_LIFETIMEBOUND) noexcept : PieceView(Internal::StoredQuery::Of(owner)) {}

    /// The index of the first pair from index `from` on whose unescaped key is `key`, or npos.
    /// Of "a=1&%61=2", Find("a", 1) is 1.
    [[nodiscard]] std::size_t Find(std::string_view key, std::size_t from = 0) const {
        return FindFrom(from, [&](const QueryPair& pair) { return pair.GetKey() == key; });
    }
};

/// A query of its own that is edited, and then put into a URI.
class QueryEdit {
public:
    /// Of the text of a query, without its "?".
    explicit QueryEdit(std::string_view query) : m_Pairs(query) {}
    /// Of a copy of a URI's query.
    template <std::derived_from<URI> AnyURI>
    explicit QueryEdit(const AnyURI& uri) : m_Pairs(uri.*Internal::StoredQuery::kMember) {}

    /// The query as it is now.
    [[nodiscard]] const std::string& GetText() const noexcept LUM_LIFETIMEBOUND { return m_Pairs.Get(); }
    /// Its pairs, until the next change.
    [[nodiscard]] QueryView View() const noexcept LUM_LIFETIMEBOUND { return QueryView(m_Pairs.Get()); }

    /// Adds "key=value" behind the last pair.
    void Append(std::string_view key, std::string_view value) { Insert(QueryView::npos, key, value); }
    /// Adds "key=value" in front of the pair at `index`, behind the last one where there is none.
    void Insert(std::size_t index, std::string_view key, std::string_view value) {
        m_Pairs.Insert(index, Written(key) + '=' + Written(value));
    }
    /// Puts "key=value" in the place of the pair at `index`; false, without a change, where there is none.
    bool Replace(std::size_t index, std::string_view key, std::string_view value) {
        return m_Pairs.Replace(index, Written(key) + '=' + Written(value));
    }
    /// The same of the value alone. The key keeps its bytes, and gets a "=" if it has none.
    bool ReplaceValue(std::size_t index, std::string_view value) {
        return m_Pairs.Replace(index, std::string(View()[index].key) + '=' + Written(value));
    }
    /// Removes the pair at `index` and one "&" beside it; false, without a change, where there is none.
    bool Remove(std::size_t index) { return m_Pairs.Remove(index); }

    /// Gives the first pair of the key this value and removes the others of the key; appends a pair where there is
    /// none.
    void Set(std::string_view key, std::string_view value) {
        const std::size_t first = View().Find(key);
        if (first == QueryView::npos) {
            Append(key, value);
            return;
        }
        QueryEdit changed = *this;
        changed.ReplaceValue(first, value);
        changed.RemoveAll(key, first + 1);
        *this = std::move(changed);
    }
    /// Removes every pair of the key from index `from` on, and returns how many there were.
    std::size_t RemoveAll(std::string_view key, std::size_t from = 0) {
        std::string kept;
        std::size_t index = 0, count = 0;
        bool isFirst = true;
        for (const QueryPair pair : View()) {
            if (index++ >= from && pair.GetKey() == key) {
                ++count;
                continue;
            }
            kept.append(isFirst ? "" : "&").append(pair.text);
            isFirst = false;
        }
        m_Pairs = Internal::PieceText<'&'>(kept);
        return count;
    }

    /// Makes this the query of `uri`, byte for byte. Nothing else of the URI changes.
    void PutInto(URI& uri) const { uri.SetQuery(m_Pairs.Get(), false); }

private:
    static std::string Written(std::string_view text) { return URI::QueryEscape(text); }

    Internal::PieceText<'&'> m_Pairs;
};

}  // namespace Lum
