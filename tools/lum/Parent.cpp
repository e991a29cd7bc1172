// lum parent: the nearest directory that holds two URIs.
#include <memory>
#include <string>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddParent(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("parent", "Find the nearest directory at or above two URIs, or A's root");
    struct Options {
        ResultForm form;
        bool ignoreCase = false;
        std::string a;
        std::string b;
    };
    const auto options = std::make_shared<Options>();
    options->form.AddTo(*command);
    command->add_flag("--ignore-case", options->ignoreCase, "Take paths that differ in case for the same");
    AddText(*command, "A", options->a, "A URI")->required();
    AddText(*command, "B", options->b, "Another URI")->required();
    command->callback([options, &status] {
        const Lum::URI parent = Lum::URI(options->a).GetCommonParent(Lum::URI(options->b), !options->ignoreCase);
        status = parent.IsValidURI() ? 0 : 1;
        const std::string text = parent.IsValidURI() ? parent.ToString(false) : std::string();
        if (options->form.isJson) {
            WriteJson({{"a", options->a}, {"b", options->b}, {"valid", parent.IsValidURI()}, {"text", text}});
        } else {
            options->form.Write(text);
        }
    });
}

}  // namespace Tool
