// lum unescape: writes texts with their escapes decoded, as bytes.
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddUnescape(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("unescape", "Decode percent escapes; what is no escape stays");
    struct Options {
        Texts texts;
        bool highBytesOnly = false;
    };
    const auto options = std::make_shared<Options>();
    options->texts.AddTo(*command);
    command->add_flag("--high-bytes-only", options->highBytesOnly, "Decode escapes of bytes from 80 to FF only");
    options->texts.AddArguments(*command, "TEXT", "The escaped texts");
    command->callback([options] {
        options->texts.ForEach([&](std::string_view text) {
            const std::string unescaped = Lum::URI::Unescape(text, options->highBytesOnly);
            if (options->texts.isJson) {
                WriteJson({{"input", text}, {"text", unescaped}});
            } else {
                options->texts.Write(unescaped);
            }
        });
    });
}

}  // namespace Tool
