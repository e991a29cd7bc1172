// lum escape: writes texts with the bytes that may not stand in a URI escaped.
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {

void AddEscape(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("escape", "Escape controls, spaces, delimiters and unwise characters");
    const auto texts = std::make_shared<Texts>();
    texts->AddTo(*command);
    texts->AddArguments(*command, "TEXT", "The texts, taken as they are");
    command->callback([texts] {
        texts->ForEach([&](std::string_view text) {
            const std::string escaped = Lum::URI::Escape(text);
            if (texts->isJson) {
                WriteJson({{"input", text}, {"text", escaped}});
            } else {
                texts->Write(escaped);
            }
        });
    });
}

}  // namespace Tool
