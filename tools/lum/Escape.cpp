// lum escape: writes a text with the bytes that may not stand in a URI escaped.
#include <memory>
#include <string>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"

namespace Tool {

void AddEscape(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("escape", "Escape controls, spaces, delimiters and unwise characters");
    const auto text = std::make_shared<std::string>();
    AddText(*command, "TEXT", *text, "The text, taken as it is")->required();
    command->callback([text] { WriteLine(Lum::URI::Escape(*text)); });
}

}  // namespace Tool
