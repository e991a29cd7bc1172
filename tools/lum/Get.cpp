// lum get: one component of each URI, a line each.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Components.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {

void AddGet(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("get", "Print one component of each URI, unescaped");
    struct Options {
        bool json = false;
        bool raw = false;
        std::string component;
        std::vector<std::string> uris;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    command->add_flag("--raw", options->raw, "Print the component as stored, escapes and all");
    std::vector<std::string> names;
    for (const Component& component : ParsedURI().Components()) {
        names.emplace_back(component.name);
    }
    command->add_option("COMPONENT", options->component, "Which one")->required()->check(CLI::IsMember(names));
    AddTexts(*command, "URI", options->uris, "The URIs; without any, the lines of standard input");
    command->callback([options, &status] {
        const std::size_t index = IndexOfComponent(options->component);
        ForEachText(options->uris, [&](std::string_view text) {
            const ParsedURI uri{Lum::URI::StringProxy(text)};
            const std::string value = uri.Read(index, options->raw);
            if (options->json) {
                WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {options->component, value}});
            } else {
                WriteLine(value);
            }
            status |= uri.IsValidURI() ? 0 : 1;
        });
    });
}

}  // namespace Tool
