// GLib: GUri, an immutable record, its escaping, and its reading of queries. Absolute URIs only.
#include <glib.h>

#include <memory>
#include <optional>
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
struct UnrefTable {
    void operator()(GHashTable* table) const noexcept { g_hash_table_unref(table); }
};
using Text = std::unique_ptr<char, Free>;
using Table = std::unique_ptr<GHashTable, UnrefTable>;

// The components as they stand in the text, the password apart: what Lum's record holds as well.
constexpr auto kFlags =
    static_cast<GUriFlags>(G_URI_FLAGS_ENCODED | G_URI_FLAGS_HAS_PASSWORD | G_URI_FLAGS_PARSE_RELAXED);

Uri Parse(const std::string& text) { return Uri(g_uri_parse(text.c_str(), kFlags, nullptr)); }
Uri Resolve(GUri* base, const std::string& reference) {
    return Uri(g_uri_parse_relative(base, reference.c_str(), kFlags, nullptr));
}
Text Print(const Uri& uri) { return Text(g_uri_to_string(uri.get())); }
Text Escape(const std::string& text) { return Text(g_uri_escape_string(text.c_str(), nullptr, FALSE)); }
Text Unescape(const std::string& text) { return Text(g_uri_unescape_string(text.c_str(), nullptr)); }

Table ToTable(const Uri& uri) {
    return Table(g_uri_parse_params(g_uri_get_query(uri.get()), -1, "&", G_URI_PARAMS_WWW_FORM, nullptr));
}

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const std::string& parse : {kParseFresh, kParseOneStep, kParseReused}) {
        AddCase(parse, name, inputs.urls, Parse);
    }
    AddPreparedCase(kPrint, name, inputs.accepted, Parse, Print);
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
    for (const ResolveCase& c : inputs.resolves) {
        for (const std::string& resolve : {c.freshName, c.reusedName}) {
            AddCase(resolve, name, c.references,
                    [base = std::shared_ptr<GUri>(Parse(c.base))](const std::string& reference) {
                        return Resolve(base.get(), reference);
                    });
        }
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return Parse(query.url); }, ToTable);
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const auto target = Resolve(Parse(base).get(), reference);
    return target ? std::optional<std::string>(Print(target).get()) : std::nullopt;
}

const AddSubject add{{"GLib", [](const std::string& text) { return Parse(text) != nullptr; }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
