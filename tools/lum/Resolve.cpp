// lum resolve: the URIs that references lead to from a base.
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddResolve(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("resolve", "Apply references to a base URI");
    struct Options {
        Texts texts;
        std::string base;
    };
    const auto options = std::make_shared<Options>();
    options->texts.AddTo(*command);
    AddText(*command, "BASE", options->base, "The base URI")->required();
    options->texts.AddArguments(*command, "REF", "The references");
    command->callback([options, &status] {
        const Lum::URI base(options->base);
        status |= base.IsValidURI() ? 0 : 1;
        options->texts.ForEach([&](std::string_view reference) {
            Lum::URI uri = base;
            uri.ChDir(reference, false);
            if (!uri.IsValidURI()) {
                status = 1;
                options->texts.Refuse(base.IsValidURI() ? reference : options->base);
            }
            if (options->texts.isJson) {
                WriteJson({{"base", options->base},
                           {"reference", reference},
                           {"valid", uri.IsValidURI()},
                           {"text", uri.ToString(false)}});
            } else {
                options->texts.Write(uri.IsValidURI() ? uri.ToString(false) : std::string());
            }
        });
    });
}

}  // namespace Tool
