// POCO: Poco::URI, a record of unescaped strings. It refuses by throwing.
#include <Poco/Exception.h>
#include <Poco/URI.h>

#include <optional>
#include <string>
#include <utility>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

std::optional<Poco::URI> Parse(const std::string& text) {
    std::optional<Poco::URI> uri;
    try {
        uri.emplace(text);
    } catch (const Poco::Exception&) {
        uri.reset();
    }
    return uri;
}

bool Reparse(Poco::URI& uri, const std::string& text) {
    try {
        uri = text;
        return true;
    } catch (const Poco::Exception&) {
        return false;
    }
}

std::optional<Poco::URI> Resolve(const Poco::URI& base, const std::string& reference) {
    std::optional<Poco::URI> uri;
    try {
        uri.emplace(base, reference);
    } catch (const Poco::Exception&) {
        uri.reset();
    }
    return uri;
}

bool ResolveTo(Poco::URI& target, const Poco::URI& base, const std::string& reference) {
    try {
        target = base;
        target.resolve(reference);
        return true;
    } catch (const Poco::Exception&) {
        return false;
    }
}

void SetQueryKey(Poco::URI& uri, const QueryPair& change) {
    Poco::URI::QueryParameters pairs = uri.getQueryParameters();
    for (auto& [key, value] : pairs) {
        if (key == change.first) {
            value = change.second;
        }
    }
    uri.setQueryParameters(pairs);
}

std::string Escape(const std::string& text) {
    // The delimiters that Lum escapes and POCO escapes only on request.
    static const std::string reserved = ":?@#";
    std::string escaped;
    Poco::URI::encode(text, reserved, escaped);
    return escaped;
}

std::string Unescape(const std::string& text) {
    std::string plain;
    Poco::URI::decode(text, plain);
    return plain;
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse);
    AddCase(kParseOneStep, name, inputs.urls, Parse);
    AddCase(kParseReused, name, inputs.urls,
            [uri = Poco::URI()](const std::string& text) mutable { return Reparse(uri, text); });
    AddPreparedCase(kPrint, name, inputs.accepted, Parse,
                    [](const std::optional<Poco::URI>& uri) { return uri->toString(); });
    AddHeldCase(kHold, name, inputs.accepted, Parse);
    AddPreparedCase(kCopy, name, inputs.accepted, Parse,
                    [](const std::optional<Poco::URI>& uri) { return Poco::URI(*uri); });
    AddPreparedCase(
        kEqual, name, inputs.accepted, [](const std::string& text) { return std::pair(Parse(text), Parse(text)); },
        [](const std::pair<std::optional<Poco::URI>, std::optional<Poco::URI>>& uris) {
            return *uris.first == *uris.second;
        });
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
    for (const ResolveCase& c : inputs.resolves) {
        const Poco::URI base(c.base);
        AddCase(c.freshName, name, c.references,
                [base](const std::string& reference) { return Resolve(base, reference); });
        AddCase(c.reusedName, name, c.references, [base, target = Poco::URI()](const std::string& reference) mutable {
            return ResolveTo(target, base, reference);
        });
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return Poco::URI(query.url); },
        [](const Poco::URI& uri) { return uri.getQueryParameters(); });
    AddCase(kSetQueryKey, name, inputs.changes,
            [uri = Poco::URI(inputs.queries.front().url)](const QueryPair& change) mutable -> const Poco::URI& {
                SetQueryKey(uri, change);
                return uri;
            });
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const auto target = Resolve(Poco::URI(base), reference);
    return target ? std::optional(target->toString()) : std::nullopt;
}

const AddSubject add{{"POCO", [](const std::string& text) { return Parse(text).has_value(); }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
