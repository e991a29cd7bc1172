// lum get: one component of each URI, a line each.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Components.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddGet(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("get", "Print one component of each URI, unescaped");
    struct Options {
        Texts texts;
        bool raw = false;
        std::string component;
    };
    const auto options = std::make_shared<Options>();
    options->texts.AddTo(*command);
    command->add_flag("--raw", options->raw, "Print the component as stored, escapes and all");
    std::vector<std::string> names;
    for (const Component& component : ParsedURI().Components()) {
        names.emplace_back(component.name);
        if (component.Title() != component.name) {
            names.emplace_back(component.Title());
        }
    }
    command->add_option("COMPONENT", options->component, "Which one")->required()->check(CLI::IsMember(names));
    options->texts.AddArguments(*command, "URI", "The URIs");
    command->callback([options, &status] {
        const std::size_t index = IndexOfComponent(options->component);
        const std::string_view name = ParsedURI().Components().at(index).name;
        options->texts.ForEach([&](std::string_view text) {
            const ParsedURI uri{Lum::URI::StringProxy(text)};
            const std::string value = uri.Read(index, options->raw);
            if (options->texts.isJson) {
                WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {name, value}});
            } else {
                options->texts.Write(value);
            }
            if (!uri.IsValidURI()) {
                status = 1;
                options->texts.Refuse(text);
            }
        });
    });
}

}  // namespace Tool
