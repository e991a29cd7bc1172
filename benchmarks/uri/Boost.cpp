// Boost.URL: one buffer with the text and a table of offsets; printing copies the buffer.
#include <boost/url.hpp>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

boost::urls::url Parse(const std::string& text) {
    const auto parsed = boost::urls::parse_uri_reference(text);
    return parsed ? boost::urls::url(*parsed) : boost::urls::url();
}

bool Reparse(boost::urls::url& url, const std::string& text) {
    const auto parsed = boost::urls::parse_uri_reference(text);
    if (parsed) {
        url = *parsed;
    }
    return parsed.has_value();
}

std::string Print(const boost::urls::url& url) { return std::string(url.buffer()); }

bool ResolveTo(boost::urls::url& target, const boost::urls::url& base, const std::string& reference) {
    const auto parsed = boost::urls::parse_uri_reference(reference);
    return parsed && boost::urls::resolve(base, *parsed, target);
}

boost::urls::url Resolve(const boost::urls::url& base, const std::string& reference) {
    boost::urls::url target;
    ResolveTo(target, base, reference);
    return target;
}

// Unless asked, a "+" is not a space here.
const boost::urls::encoding_opts kFormOptions(true);

std::map<std::string, std::string> ToMap(const boost::urls::url& url) {
    std::map<std::string, std::string> pairs;
    // The url's own options are those of its editing interface.
    for (auto pair : boost::urls::url_view(url).params(kFormOptions)) {
        pairs.insert_or_assign(std::move(pair.key), std::move(pair.value));
    }
    return pairs;
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse);
    AddCase(kParseOneStep, name, inputs.urls, Parse);
    AddCase(kParseReused, name, inputs.urls,
            [url = boost::urls::url()](const std::string& text) mutable { return Reparse(url, text); });
    AddPreparedCase(kPrint, name, inputs.accepted, Parse, Print);
    AddHeldCase(kHold, name, inputs.accepted, Parse);
    AddPreparedCase(kCopy, name, inputs.accepted, Parse,
                    [](const boost::urls::url& url) { return boost::urls::url(url); });
    AddPreparedCase(
        kEqual, name, inputs.accepted, [](const std::string& text) { return std::pair(Parse(text), Parse(text)); },
        [](const std::pair<boost::urls::url, boost::urls::url>& urls) { return urls.first == urls.second; });
    for (const ResolveCase& c : inputs.resolves) {
        const boost::urls::url base = Parse(c.base);
        AddCase(c.freshName, name, c.references,
                [base](const std::string& reference) { return Resolve(base, reference); });
        AddCase(c.reusedName, name, c.references,
                [base, target = boost::urls::url()](const std::string& reference) mutable {
                    return ResolveTo(target, base, reference);
                });
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return Parse(query.url); }, ToMap);
    AddCase(kSetQueryKey, name, inputs.changes,
            [url = Parse(inputs.queries.front().url)](const QueryPair& change) mutable -> const boost::urls::url& {
                url.params(kFormOptions).set(change.first, change.second);
                return url;
            });
}

bool Accepts(const std::string& text) { return boost::urls::parse_uri_reference(text).has_value(); }

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    boost::urls::url target;
    return ResolveTo(target, Parse(base), reference) ? std::optional(Print(target)) : std::nullopt;
}

const AddSubject add{{"Boost.URL", Accepts, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
