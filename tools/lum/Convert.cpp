// lum convert: a text from one encoding to another, block by block.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <Lum/Transcoder.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Conversion.h"
#include "tools/lum/Display.h"
#include "tools/lum/Input.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Progress.h"

namespace Tool {
namespace {

struct Options {
    std::string from;
    std::string to;
    std::string file = "-";
};

struct Failure {
    Lum::ConversionStatus status = Lum::ConversionStatus::kDone;
    std::uint64_t offset = 0;
};

/// Converts all of `source`, or up to what cannot be converted.
Failure Convert(Input& source, Lum::StreamConverter& converter) {
    using Lum::ConversionStatus;
    Progress progress("MB", 1000000, 10, source.IsTerminal());
    std::array<char, 65536> input;
    std::array<char, 131072> output;         // In most encodings, no text is more than twice as long as in another.
    std::string_view held(input.data(), 0);  // what has not been converted yet
    std::uint64_t offset = 0;
    const auto take = [&](const Lum::ConversionResult& result) {
        WriteText({output.data(), result.written});
        held.remove_prefix(result.read);
        offset += result.read;
        progress.Advance(result.read);
        return result.status;
    };
    for (;;) {
        // What was not converted comes first in the next block.
        std::memmove(input.data(), held.data(), held.size());
        const std::size_t got = source.Read(std::span(input).subspan(held.size()));
        held = {input.data(), held.size() + got};
        ConversionStatus status = ConversionStatus::kOutputFull;
        while (status == ConversionStatus::kOutputFull) {
            status = take(converter.Convert(held, output));
        }
        const bool wantsMore = status == ConversionStatus::kDone || status == ConversionStatus::kIncomplete;
        if (!wantsMore || (got == 0 && status == ConversionStatus::kIncomplete)) {
            return {status, offset};
        }
        if (got == 0) {
            return {take(converter.Finish(output)), offset};
        }
        FlushOutput();
    }
}

}  // namespace

void AddConvert(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("convert", "Convert a text from one encoding to another");
    const auto options = std::make_shared<Options>();
    const auto addEncoding = [command](const char* name, std::string& encoding, const char* help) {
        AddText(*command, name, encoding, help)->required()->option_text("ENC REQUIRED")->check(CheckEncoding);
    };
    addEncoding("--from", options->from, "The encoding of the text");
    addEncoding("--to", options->to, "The encoding of the result");
    AddText(*command, "FILE", options->file, "The file with the text; without it, or for -, standard input");
    command->callback([options, &status] {
        Lum::StreamConverter converter(options->from, options->to);
        Input source(options->file);
        const Failure failure = Convert(source, converter);
        if (const std::string what = Explain(failure.status, options->from, options->to); !what.empty()) {
            FlushOutput();
            WriteError("byte " + std::to_string(failure.offset) + ": " + Printable(what));
            status = 1;
        }
    });
}

}  // namespace Tool
