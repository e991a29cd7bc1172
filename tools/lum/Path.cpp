// lum path: local paths of three styles from URIs, and URIs from local paths.
#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

struct Style {
    std::string_view name;
    Lum::URI::StringProxy (Lum::URI::*to)() const;
    void (Lum::URI::*from)(Lum::URI::StringProxy);
};

constexpr std::array<Style, 3> kStyles{{
    {"win", &Lum::URI::ToLocalPathWin, &Lum::URI::LocalPathToURIWin},
    {"unix", &Lum::URI::ToLocalPathUnix, &Lum::URI::LocalPathToURIUnix},
    {"mac", &Lum::URI::ToLocalPathMac, &Lum::URI::LocalPathToURIMac},
}};

const Style& StyleNamed(std::string_view name) {
    return *std::find_if(kStyles.begin(), kStyles.end(), [&](const Style& style) { return style.name == name; });
}

}  // namespace

void AddPath(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("path", "Convert between URIs and local paths");
    struct Options {
        Texts texts;
        std::string to;
        std::string from;
    };
    const auto options = std::make_shared<Options>();
    const auto isStyle = CLI::IsMember({"win", "unix", "mac"});
    options->texts.AddTo(*command);
    auto* direction = command->add_option_group("direction")->require_option(1);
    direction->add_option("--to", options->to, "Print the local path of a URI in this style")->check(isStyle);
    direction->add_option("--from", options->from, "Print the URI of a local path of this style")->check(isStyle);
    options->texts.AddArguments(*command, "TEXT", "URIs or paths");
    command->callback([options, &status] {
        options->texts.ForEach([&](std::string_view text) {
            const bool isToPath = options->from.empty();
            Lum::URI uri;
            std::string result;
            if (isToPath) {
                uri = Lum::URI(Lum::URI::StringProxy(text));
                result = (uri.*StyleNamed(options->to).to)();
                status |= result.empty() ? 1 : 0;
            } else {
                (uri.*StyleNamed(options->from).from)(text);
                result = uri.ToString(false);
            }
            if (options->texts.isJson) {
                WriteJson({{"input", text}, {"valid", uri.IsValidURI()}, {isToPath ? "path" : "text", result}});
            } else {
                options->texts.Write(result);
            }
        });
    });
}

}  // namespace Tool
