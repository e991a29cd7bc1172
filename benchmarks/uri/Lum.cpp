// Lum's own URI.
#include <Lum/URI.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Case.h"
#include "Family.h"
#include "Inputs.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

Lum::URI Parse(const std::string& text) {
    Lum::URI uri;
    uri.ParseURI(text);
    return uri;
}

void AddResolveCases(const std::string& name, const ResolveCase& c) {
    AddCase(
        c.freshName, name, c.references,
        [base = Parse(c.base)](const std::string& reference) {
            Lum::URI target(base);
            target.ChDir(reference, false);
            return target;
        },
        Count::TimeAndAllocations);
    AddCase(
        c.reusedName, name, c.references,
        [base = Parse(c.base), target = Lum::URI()](const std::string& reference) mutable -> const Lum::URI& {
            target = base;
            target.ChDir(reference, false);
            return target;
        },
        Count::TimeAndAllocations);
    AddCase(c.absoluteName, name, c.references, [base = Parse(c.base)](const std::string& reference) {
        Lum::URI target = Parse(reference);
        target.MakeAbsoluteURI(base);
        return target;
    });
}

std::map<std::string, std::string> ToMap(const Lum::URI& uri) {
    std::map<std::string, std::string> pairs;
    uri.GetQueryByMap(pairs);
    return pairs;
}

using UriPair = std::pair<const Lum::URI*, const Lum::URI*>;

/// Adds the relations of each URL of the list to the one behind it, for `most` of those pairs that `counts`.
void AddRelationCase(const std::string& caseName, const std::string& name, const std::vector<std::string>& urls,
                     bool (*counts)(const Lum::URI&, const Lum::URI&), std::size_t most) {
    Register(caseName, name, [&urls, counts, most](benchmark::State& state) {
        std::vector<Lum::URI> uris;
        uris.reserve(urls.size());
        for (const std::string& url : urls) {
            uris.push_back(Parse(url));
        }
        std::vector<UriPair> pairs;
        for (std::size_t i = 1; i < uris.size(); ++i) {
            if (counts(uris[i - 1], uris[i])) {
                pairs.emplace_back(&uris[i - 1], &uris[i]);
            }
        }
        if (pairs.empty()) {
            state.SkipWithError("no such pairs in the list");
            return;
        }
        pairs = Spread(pairs, most);
        Measure(
            state, pairs, [](const UriPair& pair) { return pair.first->GetRelation(*pair.second, true); }, Count::Time);
    });
}

bool HaveSameSite(const Lum::URI& a, const Lum::URI& b) {
    return a.GetScheme() == b.GetScheme() && a.GetAuthority() == b.GetAuthority();
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse, Count::TimeAndAllocations);
    AddCase(kParseOneStep, name, inputs.urls, [](const std::string& text) { return Lum::URI(text); });
    AddCase(
        kParseReused, name, inputs.urls,
        [uri = Lum::URI()](const std::string& text) mutable { return uri.ParseURI(text); }, Count::TimeAndAllocations);
    AddPreparedCase(kPrint, name, inputs.accepted, Parse, [](const Lum::URI& uri) { return uri.ToString(false); });
    AddHeldCase(kHold, name, inputs.accepted, Parse);
    AddPreparedCase(kCopy, name, inputs.accepted, Parse, [](const Lum::URI& uri) { return Lum::URI(uri); });
    AddPreparedCase(
        kEqual, name, inputs.accepted, [](const std::string& text) { return std::pair(Parse(text), Parse(text)); },
        [](const std::pair<Lum::URI, Lum::URI>& uris) { return uris.first == uris.second; });
    AddPreparedCase(
        kMakeRelative, name, inputs.neighbours,
        [](const Neighbours& both) { return std::pair(Parse(both.base), Parse(both.target)); },
        [](const std::pair<Lum::URI, Lum::URI>& uris) {
            Lum::URI reference(uris.second);
            reference.MakeRelativeURI(uris.first, true);
            return reference;
        });
    // The results stay in the type that they come in: its user reads the string in it.
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, [](const std::string& text) { return Lum::URI::Escape(text); });
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, [](const std::string& text) { return Lum::URI::Unescape(text, false); });
    }
    for (const TextCase& c : inputs.setEscapes) {
        AddCase(c.name, name, c.texts,
                [](const std::string& text) { return Lum::URI::EscapeChars(text, kEscapedSet); });
    }
    for (const ResolveCase& c : inputs.resolves) {
        AddResolveCases(name, c);
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return Parse(query.url); }, ToMap,
        Count::TimeAndAllocations);
    AddCase(
        kSetQueryKey, name, inputs.changes,
        [uri = Parse(inputs.queries.front().url)](const QueryPair& change) mutable -> const Lum::URI& {
            uri.SetQueryValue(change.first, change.second);
            return uri;
        },
        Count::TimeAndAllocations);
    AddPreparedCase(kNameAndExtension, name, inputs.accepted, Parse,
                    [](const Lum::URI& uri) { return std::pair(uri.GetFilename(false), uri.GetExtension(true)); });
    AddRelationCase(
        kRelation, name, inputs.urls, [](const Lum::URI&, const Lum::URI&) { return true; }, kCachedCount);
    AddRelationCase("uri/relation same site", name, inputs.urls, HaveSameSite, kCachedCount);
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    Lum::URI target(base);
    target.ChDir(reference, false);
    return target.IsValidURI() ? std::optional(target.ToString(false)) : std::nullopt;
}

const AddSubject add{{kMeasured, [](const std::string& text) { return Parse(text).IsValidURI(); }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
