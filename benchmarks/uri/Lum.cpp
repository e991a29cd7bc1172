// Lum's own URI.
#include <Lum/URI.h>

#include <string>

#include "Case.h"
#include "Family.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

Lum::URI Parse(const std::string& text) {
    Lum::URI uri;
    uri.ParseURI(text);
    return uri;
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse, Count::TimeAndAllocations);
    AddCase(kParseOneStep, name, inputs.urls, [](const std::string& text) { return Lum::URI(text); });
    AddCase(
        kParseReused, name, inputs.urls,
        [uri = Lum::URI()](const std::string& text) mutable { return uri.ParseURI(text); }, Count::TimeAndAllocations);
    AddPreparedCase(kPrint, name, inputs.printed, Parse, [](const Lum::URI& uri) { return uri.ToString(false); });
    // The results stay in the type that they come in: its user reads the string in it.
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, [](const std::string& text) { return Lum::URI::Escape(text); });
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, [](const std::string& text) { return Lum::URI::Unescape(text, false); });
    }
}

const AddSubject add{{kMeasured, [](const std::string& text) { return Parse(text).IsValidURI(); }, AddCases}};

}  // namespace
}  // namespace Bench::Uri
