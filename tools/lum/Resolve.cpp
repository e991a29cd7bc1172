// lum resolve: the URIs that references lead to from a base.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {

void AddResolve(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("resolve", "Apply references to a base URI");
    struct Options {
        bool json = false;
        std::string base;
        std::vector<std::string> references;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    AddText(*command, "BASE", options->base, "The base URI")->required();
    AddTexts(*command, "REF", options->references, "The references; without any, the lines of standard input");
    command->callback([options, &status] {
        const Lum::URI base(options->base);
        status |= base.IsValidURI() ? 0 : 1;
        ForEachText(options->references, [&](std::string_view reference) {
            Lum::URI uri = base;
            uri.ChDir(reference, false);
            status |= uri.IsValidURI() ? 0 : 1;
            if (options->json) {
                WriteJson({{"base", options->base},
                           {"reference", reference},
                           {"valid", uri.IsValidURI()},
                           {"text", uri.ToString(false)}});
            } else {
                WriteLine(uri.ToString(false));
            }
        });
    });
}

}  // namespace Tool
