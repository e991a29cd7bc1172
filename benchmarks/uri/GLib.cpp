// GLib: GUri, an immutable record, and its escaping. Absolute URIs only.
#include <glib.h>

#include <memory>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

struct Unref {
    void operator()(GUri* uri) const noexcept { g_uri_unref(uri); }
};
struct Free {
    void operator()(char* text) const noexcept { g_free(text); }
};
using Uri = std::unique_ptr<GUri, Unref>;
using Text = std::unique_ptr<char, Free>;

// The components as they stand in the text, the password apart: what Lum's record holds as well.
constexpr auto kFlags =
    static_cast<GUriFlags>(G_URI_FLAGS_ENCODED | G_URI_FLAGS_HAS_PASSWORD | G_URI_FLAGS_PARSE_RELAXED);

Uri Parse(const std::string& text) { return Uri(g_uri_parse(text.c_str(), kFlags, nullptr)); }
Text Print(const Uri& uri) { return Text(g_uri_to_string(uri.get())); }
Text Escape(const std::string& text) { return Text(g_uri_escape_string(text.c_str(), nullptr, FALSE)); }
Text Unescape(const std::string& text) { return Text(g_uri_unescape_string(text.c_str(), nullptr)); }

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const std::string& parse : {kParseFresh, kParseOneStep, kParseReused}) {
        AddCase(parse, name, inputs.urls, Parse);
    }
    AddPreparedCase(kPrint, name, inputs.printed, Parse, Print);
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
}

const AddSubject add{{"GLib", [](const std::string& text) { return Parse(text) != nullptr; }, AddCases}};

}  // namespace
}  // namespace Bench::Uri
