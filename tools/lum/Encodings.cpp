// lum encodings: what the encodings are called.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Output.h"

namespace Tool {
namespace {

std::string Hexadecimal(std::uint32_t number) {
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += "0123456789ABCDEF"[number >> shift & 0xF];
    }
    return text;
}

}  // namespace

void AddEncodings(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("encodings", "List the encodings: number, name, other names");
    const auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Print one JSON object a line");
    command->callback([json] {
        const std::vector<Lum::EncodingInfo> encodings = Lum::KnownEncodings();
        std::size_t width = 0;
        for (const Lum::EncodingInfo& info : encodings) {
            width = std::max(width, info.name.size());
        }
        for (const Lum::EncodingInfo& info : encodings) {
            if (*json) {
                WriteJson({{"name", info.name},
                           {"number", info.encoding},
                           {"aliases", info.aliases},
                           {"convertible", info.isConvertible}});
                continue;
            }
            std::string line = Hexadecimal(info.encoding) + "  " + info.name;
            std::string others;
            for (const std::string& alias : info.aliases) {
                others += ' ' + alias;
            }
            others += info.isConvertible ? "" : " (a name only: there is no converter)";
            if (!others.empty()) {
                line.append(width - info.name.size() + 2, ' ');
                line += Indented(std::string_view(others).substr(1), line.size());
            }
            WriteLine(line);
        }
    });
}

}  // namespace Tool
