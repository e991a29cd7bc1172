// The options that keep secrets out of what is printed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Lum/Redaction.h>
#include <CLI/App.hpp>

#include "tools/lum/Arguments.h"

namespace Tool {

struct Redaction {
    /// Adds the options; the object must stay where it is until they are read.
    void AddTo(CLI::App& command) {
        command.add_flag("--redact", isWanted, "Leave passwords out");
        AddTexts(command, "--redact-key", keys, "Leave out the values of this key in queries, and passwords")
            ->option_text("KEY")
            ->allow_extra_args(false);
    }
    /// A text as it may be printed.
    [[nodiscard]] std::string Of(std::string_view text) const {
        return isWanted || !keys.empty() ? Lum::Redacted(text, {keys.begin(), keys.end()}) : std::string(text);
    }

    bool isWanted = false;
    std::vector<std::string> keys;
};

}  // namespace Tool
