// lum convert: a text from one encoding to another, block by block.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/LossyConversion.h>
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

/// As a name of an encoding: the one whose byte order mark the text begins with.
constexpr std::string_view kByMark = "auto-bom";

struct Mark {
    std::string_view bytes;
    const char* encoding;
};
/// The last one is for texts without a mark.
constexpr std::array<Mark, 4> kMarks{
    {{"\xEF\xBB\xBF", "utf-8"}, {"\xFE\xFF", "utf-16be"}, {"\xFF\xFE", "utf-16le"}, {"", "utf-8"}}};
constexpr std::size_t kLongestMark = 3;

/// What stands in the place of a bad element; nothing where the conversion ends.
using Replacement = std::optional<std::u16string>;

Replacement InHex(const Lum::BadElement& bad) {
    constexpr std::u16string_view digits = u"0123456789ABCDEF";
    std::u16string text;
    for (const char byte : bad.bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text.append(u"\\x").append(1, digits[value >> 4]).append(1, digits[value & 0xF]);
    }
    return text;
}

struct Choice {
    const char* name;
    Lum::BadElementFunction onBad;
};
const std::array<Choice, 4>& Choices() {
    static const std::array<Choice, 4> choices{{
        {"stop", [](const Lum::BadElement& /*bad*/) { return Replacement(); }},
        {"replace", {}},
        {"hex", InHex},
        {"skip", [](const Lum::BadElement& /*bad*/) { return Replacement(u""); }},
    }};
    return choices;
}

struct Options {
    std::string from;
    std::string to;
    std::string onError = "stop";
    std::string file = "-";
};

struct Failure {
    Lum::ConversionStatus status = Lum::ConversionStatus::kDone;
    std::uint64_t offset = 0;
};

using Block = std::array<char, 65536>;

/// Converts `start` and all of `source` behind it, or up to what cannot be converted.
Failure Convert(std::string_view start, Input& source, Lum::LossyConverter& converter) {
    using Lum::ConversionStatus;
    Progress progress("MB", 1000000, 10, source.IsTerminal());
    Block input;
    std::array<char, 131072> output;  // In most encodings, no text is more than twice as long as in another.
    std::string_view held = start;    // what has not been converted yet
    std::uint64_t offset = 0;
    for (;;) {
        // What was not converted comes first in the next block.
        std::memmove(input.data(), held.data(), held.size());
        const std::size_t got = source.Read(std::span(input).subspan(held.size()));
        held = {input.data(), held.size() + got};
        ConversionStatus status = ConversionStatus::kOutputFull;
        while (status == ConversionStatus::kOutputFull) {
            const Lum::ConversionResult result =
                got == 0 ? converter.Finish(held, output) : converter.Convert(held, output);
            WriteText({output.data(), result.written});
            held.remove_prefix(result.read);
            offset += result.read;
            progress.Advance(result.read);
            status = result.status;
        }
        if (got == 0 || (status != ConversionStatus::kDone && status != ConversionStatus::kIncomplete)) {
            return {status, offset};
        }
        FlushOutput();
    }
}

/// Returns the status of the tool.
int Convert(const Options& options) {
    Input source(options.file);
    std::array<char, kLongestMark> start;
    std::size_t size = 0;
    Mark mark{"", options.from.c_str()};
    if (options.from == kByMark) {
        std::size_t got = 1;
        for (; got != 0 && size < start.size(); size += got) {
            got = source.Read(std::span(start).subspan(size));
        }
        mark = *std::find_if(kMarks.begin(), kMarks.end(), [&](const Mark& one) {
            return std::string_view(start.data(), size).starts_with(one.bytes);
        });
    }
    const auto* const choice = std::find_if(Choices().begin(), Choices().end(),
                                            [&](const Choice& one) { return one.name == options.onError; });
    Lum::LossyConverter converter(mark.encoding, options.to, choice->onBad);
    const std::string_view text(start.data(), size);
    const Failure failure = Convert(text.substr(mark.bytes.size()), source, converter);
    const std::string what = Explain(failure.status, mark.encoding, options.to);
    if (what.empty()) {
        return 0;
    }
    FlushOutput();
    WriteError("byte " + std::to_string(mark.bytes.size() + failure.offset) + ": " + Printable(what));
    return 1;
}

}  // namespace

void AddConvert(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("convert", "Convert a text from one encoding to another");
    const auto options = std::make_shared<Options>();
    const auto addEncoding = [command](const char* name, std::string& encoding, const char* help) {
        return AddText(*command, name, encoding, help)->required()->option_text("ENC REQUIRED");
    };
    addEncoding("--from", options->from, "The encoding of the text; auto-bom: of its byte order mark, or UTF-8")
        ->check([](const std::string& name) { return name == kByMark ? std::string() : CheckEncoding(name); });
    addEncoding("--to", options->to, "The encoding of the result")->check(CheckEncoding);
    std::vector<std::string> names;
    for (const Choice& choice : Choices()) {
        names.emplace_back(choice.name);
    }
    command->add_option("--on-error", options->onError, "What to do about bytes that cannot be converted")
        ->check(CLI::IsMember(names));
    AddText(*command, "FILE", options->file, "The file with the text; without it, or for -, standard input");
    command->callback([options, &status] { status |= Convert(*options); });
}

}  // namespace Tool
