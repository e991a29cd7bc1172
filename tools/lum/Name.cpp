// lum name: the last component of the path and its parts.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {

void AddName(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("name", "Show file name, extension and last component of URIs");
    struct Options {
        bool json = false;
        std::vector<std::string> uris;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    AddTexts(*command, "URI", options->uris, "The URIs; without any, the lines of standard input");
    command->callback([options, &status] {
        ForEachText(options->uris, [&](std::string_view text) {
            const Lum::URI uri{Lum::URI::StringProxy(text)};
            status |= uri.IsValidURI() ? 0 : 1;
            const std::string filename = uri.GetFilename(false);
            const std::string extension = uri.GetExtension(true);
            const std::string component = uri.GetLastPathComponent();
            if (options->json) {
                WriteJson({{"input", text},
                           {"valid", uri.IsValidURI()},
                           {"filename", filename},
                           {"extension", extension},
                           {"lastComponent", component},
                           {"directory", uri.IsDirectory()}});
                return;
            }
            WriteText(Printable(text) + '\n' + Row("file name", Printable(filename)) +
                      Row("extension", Printable(extension)) + Row("last component", Printable(component)) +
                      Row("directory", uri.IsDirectory() ? "yes" : "no"));
        });
    });
}

}  // namespace Tool
