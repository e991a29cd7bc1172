// lum name: the last component of the path and its parts.
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddName(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("name", "Show file name, extension and last component of URIs");
    const auto texts = std::make_shared<Texts>();
    texts->AddTo(*command);
    texts->AddArguments(*command, "URI", "The URIs");
    command->callback([texts, &status] {
        texts->ForEach([&](std::string_view text) {
            const Lum::URI uri{Lum::URI::StringProxy(text)};
            if (!uri.IsValidURI()) {
                status = 1;
                texts->Refuse(text);
            }
            const std::string filename = uri.GetFilename(false);
            const std::string extension = uri.GetExtension(true);
            const std::string component = uri.GetLastPathComponent();
            if (texts->isJson) {
                WriteJson({{"input", text},
                           {"valid", uri.IsValidURI()},
                           {"filename", filename},
                           {"extension", extension},
                           {"lastComponent", component},
                           {"directory", uri.IsDirectory()}});
                return;
            }
            WriteText(Subject(text) + Row("file name", Printable(filename)) + Row("extension", Printable(extension)) +
                      Row("last component", Printable(component)) + Row("directory", uri.IsDirectory() ? "yes" : "no"));
        });
    });
}

}  // namespace Tool
