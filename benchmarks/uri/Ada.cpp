// ada: the fastest URL parser known. It follows the WHATWG's rules, so it normalises more than a URI asks
// for: one buffer and offsets (url_aggregator).
#include <ada.h>

#include <optional>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

using Parsed = ada::result<ada::url_aggregator>;

Parsed Parse(const std::string& text) { return ada::parse<ada::url_aggregator>(text); }

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const std::string& parse : {kParseFresh, kParseOneStep, kParseReused}) {
        AddCase(parse, name, inputs.urls, Parse);
    }
    AddHeldCase(kHold, name, inputs.accepted, Parse);
    AddPreparedCase(kCopy, name, inputs.accepted, Parse, [](const Parsed& url) { return Parsed(url); });
    for (const ResolveCase& c : inputs.resolves) {
        for (const std::string& resolve : {c.freshName, c.reusedName, c.absoluteName}) {
            AddCase(resolve, name, c.references, [base = Parse(c.base)](const std::string& reference) {
                return ada::parse<ada::url_aggregator>(reference, base ? &*base : nullptr);
            });
        }
    }
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const Parsed from = Parse(base);
    const Parsed target = ada::parse<ada::url_aggregator>(reference, from ? &*from : nullptr);
    return target ? std::optional<std::string>(target->get_href()) : std::nullopt;
}

const AddSubject add{{"ada", [](const std::string& text) { return Parse(text).has_value(); }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
