// lum query: the pairs of a query, one value of it, or the URI with some values set.
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/QueryView.h>
#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

struct QueryOptions {
    Texts texts;
    bool raw = false;
    std::string key;
    std::vector<std::string> pairs;
};

/// The pairs as stored, in their order.
void ShowRaw(const QueryOptions& options, std::string_view text, const Lum::URI& uri) {
    auto list = nlohmann::ordered_json::array();
    for (const Lum::QueryPair pair : Lum::QueryView(uri)) {
        if (options.texts.isJson) {
            list.push_back({{"key", pair.key}, {"value", pair.value}});
        } else {
            WriteLine(Printable(pair.text));
        }
    }
    if (options.texts.isJson) {
        WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {"pairs", list}});
    }
}

void ShowAll(const QueryOptions& options, std::string_view text, const Lum::URI& uri) {
    if (options.raw) {
        ShowRaw(options, text, uri);
        return;
    }
    std::map<std::string, std::string> pairs;
    uri.GetQueryByMap(pairs);
    if (options.texts.isJson) {
        // Not an object of its own: keys that are not UTF-8 could become the same.
        auto list = nlohmann::ordered_json::array();
        for (const auto& [key, value] : pairs) {
            list.push_back({{"key", key}, {"value", value}});
        }
        WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {"pairs", list}});
        return;
    }
    for (const auto& [key, value] : pairs) {
        WriteLine(Printable(key) + " = " + Printable(value));
    }
}

bool ShowOne(const QueryOptions& options, std::string_view text, const Lum::URI& uri) {
    std::string value;
    bool isFound = uri.GetQueryValue(options.key, value);
    if (options.raw) {
        const Lum::QueryView pairs(uri);
        const std::size_t index = pairs.Find(options.key);
        isFound = index != Lum::QueryView::npos;
        value = pairs[index].value;
    }
    if (options.texts.isJson) {
        WriteJson(
            {{"input", text}, {"valid", uri.IsValidURI()}, {"key", options.key}, {"found", isFound}, {"value", value}});
    } else {
        options.texts.Write(value);
    }
    return isFound;
}

void SetAndShow(const QueryOptions& options, std::string_view text, Lum::URI& uri) {
    Lum::QueryEdit edit(uri);
    for (const std::string& pair : options.pairs) {
        const std::size_t divider = pair.find('=');
        const std::string key = pair.substr(0, divider);
        const std::string value = pair.substr(divider + 1);
        if (options.raw) {
            edit.Set(key, value);
        } else {
            uri.SetQueryValue(key, value);
        }
    }
    if (options.raw) {
        edit.PutInto(uri);
    }
    if (options.texts.isJson) {
        WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {"text", uri.ToString(false)}});
    } else {
        options.texts.Write(uri.IsValidURI() ? uri.ToString(false) : std::string());
    }
}

}  // namespace

void AddQuery(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("query", "Show the pairs of a query, get one, or set some");
    const auto options = std::make_shared<QueryOptions>();
    options->texts.AddTo(*command);
    command->add_flag("--raw", options->raw, "Pairs as stored, in their order; --set leaves the others as they are");
    options->texts.AddArguments(*command, "URI", "The URIs");
    auto* get = AddText(*command, "--get", options->key, "Print the value of this key")->option_text("KEY");
    auto* set = AddTexts(*command, "--set", options->pairs, "Set these pairs and print the URI");
    set->option_text("KEY=VALUE ...")->excludes(get)->check(CheckPair);
    command->callback([options, get, set, &status] {
        options->texts.ForEach([&](std::string_view text) {
            Lum::URI parsed{Lum::URI::StringProxy(text)};
            if (!parsed.IsValidURI()) {
                status = 1;
                options->texts.Refuse(text);
            }
            if (!get->empty()) {
                status |= ShowOne(*options, text, parsed) ? 0 : 1;
            } else if (!set->empty()) {
                SetAndShow(*options, text, parsed);
            } else {
                ShowAll(*options, text, parsed);
            }
        });
    });
}

}  // namespace Tool
