// lum parent: the nearest directory that holds two URIs.
#include <memory>
#include <string>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {

void AddParent(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("parent", "Find the nearest directory at or above two URIs, or A's root");
    struct Options {
        bool json = false;
        bool ignoreCase = false;
        std::string a;
        std::string b;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object");
    command->add_flag("--ignore-case", options->ignoreCase, "Take paths that differ in case for the same");
    AddText(*command, "A", options->a, "A URI")->required();
    AddText(*command, "B", options->b, "Another URI")->required();
    command->callback([options, &status] {
        const Lum::URI parent = Lum::URI(options->a).GetCommonParent(Lum::URI(options->b), !options->ignoreCase);
        status = parent.IsValidURI() ? 0 : 1;
        const std::string text = parent.IsValidURI() ? parent.ToString(false) : std::string();
        if (options->json) {
            WriteJson({{"a", options->a}, {"b", options->b}, {"valid", parent.IsValidURI()}, {"text", text}});
        } else {
            WriteLine(text);
        }
    });
}

}  // namespace Tool
