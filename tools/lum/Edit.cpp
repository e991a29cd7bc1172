// lum edit: each URI with some of its components set, and pairs of its query set or removed.
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/PathView.h>
#include <Lum/QueryView.h>
#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Components.h"
#include "tools/lum/Output.h"
#include "tools/lum/Redaction.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

/// An option that sets a component, and the setter.
struct Setting {
    const char* option;
    const char* help;
    void (*set)(Lum::URI& uri, const std::string& value);
};

constexpr std::array<Setting, 9> kSettings{{
    {"--scheme", "The scheme",
     [](Lum::URI& uri, const std::string& value) {
         uri.SetScheme(value);
         // The scheme decides whether the URI is absolute.
         uri.SetHierState(uri.IsHierarchical());
     }},
    {"--user", "The user name", [](Lum::URI& uri, const std::string& value) { uri.SetUsername(value); }},
    {"--password", "The password", [](Lum::URI& uri, const std::string& value) { uri.SetPassword(value); }},
    {"--host", "The host", [](Lum::URI& uri, const std::string& value) { uri.SetAuthority(value); }},
    {"--port", "The port", [](Lum::URI& uri, const std::string& value) { uri.SetServerPort(value); }},
    {"--path", "The path", [](Lum::URI& uri, const std::string& value) { uri.SetPath(value); }},
    {"--query", "The query", [](Lum::URI& uri, const std::string& value) { uri.SetQuery(value, true); }},
    {"--fragment", "The fragment", [](Lum::URI& uri, const std::string& value) { uri.SetFragment(value); }},
    {"--non-hierarchical", "What follows the scheme's \":\" where no \"//\" does",
     [](Lum::URI& uri, const std::string& value) { uri.SetNonHierarchical(value); }},
}};

struct EditOptions {
    Texts texts;
    Redaction redaction;
    std::array<std::string, kSettings.size()> values;
    std::array<CLI::Option*, kSettings.size()> given{};
    std::vector<std::string> pairs;
    std::vector<std::string> added;
    std::vector<std::string> removed;
};

void Edit(const EditOptions& options, Lum::URI& uri) {
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        if (!options.given.at(i)->empty()) {
            kSettings.at(i).set(uri, options.values.at(i));
        }
    }
    // A path that no "/" begins would continue the host.
    Lum::PathEdit path(uri);
    if (!uri.GetAuthority().empty() && path.GetCount() > 0) {
        path.SetRooted(true);
        path.PutInto(uri);
    }
    Lum::QueryEdit query(uri);
    for (const std::string& key : options.removed) {
        query.RemoveAll(key);
    }
    for (const std::string& pair : options.pairs) {
        const std::size_t divider = pair.find('=');
        query.Set(pair.substr(0, divider), pair.substr(divider + 1));
    }
    for (const std::string& pair : options.added) {
        const std::size_t divider = pair.find('=');
        query.Append(pair.substr(0, divider), pair.substr(divider + 1));
    }
    query.PutInto(uri);
}

/// Whether the printed URI has the same components: a relative reference prints no host, and no scheme has digits.
bool ReadsBack(const ParsedURI& uri) {
    const ParsedURI read{Lum::URI::StringProxy(uri.ToString(false))};
    const auto components = read.Components();
    return read.IsValidURI() && std::equal(components.begin(), components.end(), uri.Components().begin(),
                                           [](const Component& a, const Component& b) { return a.stored == b.stored; });
}

}  // namespace

void AddEdit(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("edit", "Print each URI with some of its parts changed");
    const auto options = std::make_shared<EditOptions>();
    options->texts.AddTo(*command);
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        auto* option = AddText(*command, kSettings.at(i).option, options->values.at(i), kSettings.at(i).help);
        options->given.at(i) = option->option_text("TEXT");
    }
    // Each occurrence takes one text, so that a URI may follow it.
    AddTexts(*command, "--remove", options->removed, "Remove the pairs of this key from the query")
        ->option_text("KEY")
        ->allow_extra_args(false);
    AddTexts(*command, "--set", options->pairs, "Set the value of a key, in its place, or append the pair")
        ->option_text("KEY=VALUE")
        ->allow_extra_args(false)
        ->check(CheckPair);
    AddTexts(*command, "--append", options->added, "Append a pair to the query")
        ->option_text("KEY=VALUE")
        ->allow_extra_args(false)
        ->check(CheckPair);
    options->redaction.AddTo(*command);
    options->texts.AddArguments(*command, "URI", "The URIs");
    command->callback([options, &status] {
        options->texts.ForEach([&](std::string_view text) {
            ParsedURI uri{Lum::URI::StringProxy(text)};
            std::string edited;
            if (uri.IsValidURI()) {
                Edit(*options, uri);
                edited = ReadsBack(uri) ? uri.ToString(false) : "";
            }
            const bool isValid = !edited.empty();
            edited = options->redaction.Of(edited);
            if (options->texts.isJson) {
                WriteJson({{"input", options->redaction.Of(text)}, {"valid", isValid}, {"text", edited}});
            } else {
                options->texts.Write(edited);
            }
            if (!isValid) {
                status = 1;
                options->texts.Refuse(options->redaction.Of(text),
                                      uri.IsValidURI() ? "the result would not read back as it was set" : "");
            }
        });
    });
}

}  // namespace Tool
