// lum unescape: writes a text with its escapes decoded, as bytes.
#include <memory>
#include <string>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"

namespace Tool {

void AddUnescape(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("unescape", "Decode percent escapes; what is no escape stays");
    struct Options {
        std::string text;
        bool highBytesOnly = false;
    };
    const auto options = std::make_shared<Options>();
    AddText(*command, "TEXT", options->text, "The escaped text")->required();
    command->add_flag("--high-bytes-only", options->highBytesOnly, "Decode escapes of bytes from 80 to FF only");
    command->callback([options] { WriteLine(Lum::URI::Unescape(options->text, options->highBytesOnly)); });
}

}  // namespace Tool
