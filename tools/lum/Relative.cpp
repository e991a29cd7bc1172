// lum relative: the shortest reference from a base to a target.
#include <memory>
#include <string>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddRelative(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("relative", "Make the relative reference that leads from a base to a target");
    struct Options {
        ResultForm form;
        bool ignoreCase = false;
        std::string target;
        std::string base;
    };
    const auto options = std::make_shared<Options>();
    options->form.AddTo(*command);
    command->add_flag("--ignore-case", options->ignoreCase, "Take path segments that differ in case for the same");
    AddText(*command, "TARGET", options->target, "The URI to be reached")->required();
    AddText(*command, "BASE", options->base, "The URI to start from")->required();
    command->callback([options, &status] {
        Lum::URI uri(options->target);
        const Lum::URI base(options->base);
        const bool isRelative =
            uri.IsValidURI() && base.IsValidURI() && uri.MakeRelativeURI(base, !options->ignoreCase);
        status = isRelative ? 0 : 1;
        const std::string text = isRelative ? uri.ToString(false) : std::string();
        if (options->form.isJson) {
            WriteJson({{"target", options->target}, {"base", options->base}, {"possible", isRelative}, {"text", text}});
        } else {
            options->form.Write(text);
        }
    });
}

}  // namespace Tool
