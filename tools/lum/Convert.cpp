// lum convert: a text from one encoding to another, block by block.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
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
#include "tools/lum/Host.h"
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
/// The first that fits holds: a mark of UTF-32 begins with one of UTF-16, and the last is for texts without a mark.
constexpr std::array<Mark, 6> kMarks{{{"\xEF\xBB\xBF", "utf-8"},
                                      {{"\x00\x00\xFE\xFF", 4}, "utf-32be"},
                                      {{"\xFF\xFE\x00\x00", 4}, "utf-32le"},
                                      {"\xFE\xFF", "utf-16be"},
                                      {"\xFF\xFE", "utf-16le"},
                                      {"", "utf-8"}}};
constexpr std::size_t kLongestMark = 4;

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

struct ConvertOptions {
    std::string from;
    std::string to;
    std::string onError = "stop";
    bool isInPlace = false;
    std::vector<std::string> files;
};

struct Failure {
    Lum::ConversionStatus status = Lum::ConversionStatus::kDone;
    std::uint64_t offset = 0;
    std::uint64_t lineFeeds = 0;  ///< Before the offset, where the input can be read only once.
};

using Block = std::array<char, 65536>;

/// Takes what has been converted, as far as the input has come.
using Sink = std::function<void(std::string_view)>;

/// Converts `start` and all of `source` behind it, or up to what cannot be converted.
Failure Convert(std::string_view start, Input& source, Lum::LossyConverter& converter, const Sink& write) {
    using Lum::ConversionStatus;
    Progress progress("MB", 1000000, 10, source.IsTerminal());
    Block input;
    std::array<char, 131072> output;  // In most encodings, no text is more than twice as long as in another.
    std::string_view held = start;    // what has not been converted yet
    std::uint64_t offset = 0;
    std::uint64_t lineFeeds = 0;
    const bool countsLines = !source.CanBeReadAgain();
    for (;;) {
        // What was not converted comes first in the next block.
        std::memmove(input.data(), held.data(), held.size());
        const std::size_t got = source.Read(std::span(input).subspan(held.size()));
        held = {input.data(), held.size() + got};
        ConversionStatus status = ConversionStatus::kOutputFull;
        while (status == ConversionStatus::kOutputFull) {
            const Lum::ConversionResult result =
                got == 0 ? converter.Finish(held, output) : converter.Convert(held, output);
            write({output.data(), result.written});
            if (countsLines) {
                lineFeeds += CountLineFeeds(held.substr(0, result.read));
            }
            held.remove_prefix(result.read);
            offset += result.read;
            progress.Advance(result.read);
            status = result.status;
        }
        if (got == 0 || (status != ConversionStatus::kDone && status != ConversionStatus::kIncomplete)) {
            return {status, offset, lineFeeds};
        }
        FlushOutput();
    }
}

/// Whether a byte 0x0A of the encoding is a line feed, so that lines can be counted.
bool HasPlainLines(const std::string& encoding) { return Lum::ConvertText("\n", encoding, "utf-8").text == "\n"; }

/// Returns the status of the tool.
int Convert(const ConvertOptions& options, Input& source, const Sink& write) {
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
    const Failure failure = Convert(text.substr(mark.bytes.size()), source, converter, write);
    const std::string what = Explain(failure.status, mark.encoding, options.to);
    if (what.empty()) {
        return 0;
    }
    FlushOutput();
    const std::uint64_t offset = mark.bytes.size() + failure.offset;
    std::string where = source.Name();
    if (HasPlainLines(mark.encoding)) {
        const std::uint64_t before = source.CanBeReadAgain() ? source.CountLineFeedsAgain(offset) : failure.lineFeeds;
        where += ", line " + std::to_string(before + 1);
    }
    WriteError(where + ", byte " + std::to_string(offset) + ": " + Printable(what) +
               (options.isInPlace ? "; the file is as it was" : "") + " (--on-error says how to go on)");
    return 1;
}

int ConvertInPlace(const ConvertOptions& options, const std::string& file, std::set<std::string>& done) {
    FileReplacement replacement(file);
    // Converted twice, it would be another text.
    if (!done.insert(replacement.File()).second) {
        throw std::runtime_error('"' + Printable(file) + "\" has been converted already; give each file once");
    }
    if (replacement.HasOtherNames()) {
        WriteError('"' + Printable(file) + "\" has other names (hard links), which keep the old text");
    }
    Input source(replacement.File());
    const int status = Convert(options, source, [&](std::string_view bytes) { replacement.Write(bytes); });
    if (status == 0) {
        replacement.Finish();
    }
    return status;
}

/// Each file by itself: one that cannot be converted does not keep the others from it.
int ConvertAllInPlace(const ConvertOptions& options) {
    int status = 0;
    std::set<std::string> done;
    for (const std::string& file : options.files) {
        try {
            status = std::max(status, ConvertInPlace(options, file, done));
        } catch (const std::exception& error) {
            WriteError(error.what());
            status = 2;
        }
    }
    return status;
}

/// One after the other, up to what cannot be converted.
int ConvertAll(const ConvertOptions& options) {
    for (const std::string& file : options.files.empty() ? std::vector<std::string>{"-"} : options.files) {
        Input source(file);
        if (source.IsOutput()) {
            throw std::runtime_error(source.Name() + " is the output as well; --in-place replaces a file");
        }
        if (const int status = Convert(options, source, WriteText); status != 0) {
            return status;
        }
    }
    return 0;
}

}  // namespace

void AddConvert(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("convert", "Convert a text from one encoding to another");
    const auto options = std::make_shared<ConvertOptions>();
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
    command->add_flag("-i,--in-place", options->isInPlace,
                      "Replace each file by its conversion, if all of it succeeds");
    AddTexts(*command, "FILE", options->files, "The files with the texts; without any, or for -, standard input");
    command->callback([options, &status] {
        const auto& files = options->files;
        if (options->isInPlace && (files.empty() || std::find(files.begin(), files.end(), "-") != files.end())) {
            throw CLI::ValidationError("--in-place", "needs files, not standard input");
        }
        status = options->isInPlace ? ConvertAllInPlace(*options) : ConvertAll(*options);
    });
}

}  // namespace Tool
