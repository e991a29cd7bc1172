// POCO: Poco::URI, a record of unescaped strings. It refuses by throwing.
#include <Poco/Exception.h>
#include <Poco/URI.h>

#include <optional>
#include <string>

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

std::string Escape(const std::string& text) {
    // The delimiters that Lum escapes and POCO does not unless told so.
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
    AddPreparedCase(kPrint, name, inputs.printed, Parse,
                    [](const std::optional<Poco::URI>& uri) { return uri->toString(); });
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
}

const AddSubject add{{"POCO", [](const std::string& text) { return Parse(text).has_value(); }, AddCases}};

}  // namespace
}  // namespace Bench::Uri
