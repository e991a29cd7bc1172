// The least that the results can cost: strings filled with what is known beforehand, found by nobody.
//
// What belongs into the nine strings is asked of Lum ahead of the clock, so that floor and Lum fill
// the same record; for a text that Lum refuses, of a text as long that it does not.
#include <Lum/URI.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Case.h"
#include "Family.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

constexpr std::size_t kComponents = 9;

/// The contents of a record in one text, and how many bytes of it belong to each string.
struct Known {
    std::string text;
    std::array<std::uint32_t, kComponents> sizes{};
};

/// Has the layout of the record that is filled, its dispatch pointer included.
struct Record {
    virtual ~Record() = default;
    std::array<std::string, kComponents> components;
    bool isValid = false;
    bool isRelative = false;
    bool isHierarchical = false;
};

/// Opens the record for reading.
struct OpenUri : Lum::URI {
    explicit OpenUri(const Lum::URI& uri) : URI(uri) {}
    [[nodiscard]] Known Contents() const {
        Known known;
        std::size_t next = 0;
        for (const std::string* component : {&m_Scheme, &m_Authority, &m_ServerPort, &m_Path, &m_Query, &m_Fragment,
                                             &m_Username, &m_Password, &m_NonHierarchical}) {
            known.text += *component;
            known.sizes[next++] = static_cast<std::uint32_t>(component->size());
        }
        return known;
    }
};

void Fill(Record& record, const Known& known) {
    const char* from = known.text.data();
    for (std::size_t i = 0; i < kComponents; ++i) {
        if (const std::size_t size = known.sizes[i]; size != 0) {
            record.components[i].assign(from, size);
            from += size;
        } else if (!record.components[i].empty()) {
            record.components[i].clear();
        }
    }
    record.isValid = true;
}

Record FillFresh(const Known& known) {
    Record record;
    Fill(record, known);
    return record;
}

Known Foresee(const std::string& text) {
    Lum::URI uri(text);
    if (!uri.IsValidURI()) {
        // Lum refuses only when it has stored: what refusing costs is counted by the same nine strings.
        std::string harmless = text;
        std::replace(harmless.begin(), harmless.end(), '\\', '_');
        uri = harmless;
    }
    return OpenUri(uri).Contents();
}

using QueryMap = std::map<std::string, std::string>;

QueryMap FillMap(const std::vector<QueryPair>& pairs) {
    QueryMap map;
    for (const auto& [key, value] : pairs) {
        map.insert_or_assign(key, value);
    }
    return map;
}

/// Neither unescapes nor escapes.
std::string SetQueryKey(const std::vector<QueryPair>& pairs, const QueryPair& change) {
    QueryMap map = FillMap(pairs);
    map.insert_or_assign(change.first, change.second);
    std::string query;
    for (const auto& [key, value] : map) {
        query += query.empty() ? "" : "&";
        query += key;
        query += '=';
        query += value;
    }
    return query;
}

LastName<std::string> NameAndExtension(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    const std::string_view extension = dot == std::string_view::npos ? std::string_view{} : name.substr(dot + 1);
    return {std::string(name), std::string(extension)};
}

void AddResolveCases(const std::string& name, const ResolveCase& c) {
    const auto foresee = [base = Lum::URI(c.base)](const std::string& reference) {
        Lum::URI target(base);
        target.ChDir(reference, false);
        return OpenUri(target).Contents();
    };
    AddPreparedCase(c.freshName, name, c.references, foresee, FillFresh, Count::TimeAndAllocations);
    AddPreparedCase(
        c.reusedName, name, c.references, foresee,
        [record = Record()](const Known& known) mutable -> const Record& {
            Fill(record, known);
            return record;
        },
        Count::TimeAndAllocations);
}

std::string Copy(const std::string& text) { return text; }

void AddCases(const std::string& name, const Inputs& inputs) {
    AddPreparedCase(kParseFresh, name, inputs.urls, Foresee, FillFresh, Count::TimeAndAllocations);
    AddPreparedCase(kParseOneStep, name, inputs.urls, Foresee, FillFresh);
    AddPreparedCase(
        kParseReused, name, inputs.urls, Foresee,
        [record = Record()](const Known& known) mutable -> const Record& {
            Fill(record, known);
            return record;
        },
        Count::TimeAndAllocations);
    AddCase(kPrint, name, inputs.accepted, Copy);
    for (const TextCase& c : inputs.escapes) {
        AddPreparedCase(
            c.name, name, c.texts, [](const std::string& text) -> std::string { return Lum::URI::Escape(text); }, Copy);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddPreparedCase(
            c.name, name, c.texts,
            [](const std::string& text) -> std::string { return Lum::URI::Unescape(text, false); }, Copy);
    }
    for (const ResolveCase& c : inputs.resolves) {
        AddResolveCases(name, c);
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return query.pairs; }, FillMap,
        Count::TimeAndAllocations);
    AddCase(
        kSetQueryKey, name, inputs.changes,
        [pairs = inputs.queries.front().pairs](const QueryPair& change) { return SetQueryKey(pairs, change); },
        Count::TimeAndAllocations);
    AddPreparedCase(
        kNameAndExtension, name, inputs.accepted, [](const std::string& text) { return Lum::URI(text).GetPath(); },
        NameAndExtension);
}

const AddSubject add{{kFloor, nullptr, nullptr, AddCases}};

}  // namespace
}  // namespace Bench::Uri
