// lum parse: what was found in each URI, as a table or as JSON, and why a text is not valid.
#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/Transcoder.h>
#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Components.h"
#include "tools/lum/Conversion.h"
#include "tools/lum/Display.h"
#include "tools/lum/LineFormat.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Output.h"
#include "tools/lum/Problems.h"
#include "tools/lum/Redaction.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

/// A component as bytes of the encoding, with those that its escapes stand for.
std::string BytesOf(std::string_view stored, const std::string& encoding) {
    constexpr std::size_t escapeSize = 3;
    std::string bytes;
    while (!stored.empty()) {
        const bool isEscape = stored.starts_with('%') && stored.size() >= escapeSize;
        const std::string piece(stored.substr(0, isEscape ? escapeSize : stored.find('%', 1)));
        bytes +=
            isEscape ? std::string(Lum::URI::Unescape(piece, false)) : Lum::Transcoder::UTF8ToEncoding(piece, encoding);
        stored.remove_prefix(piece.size());
    }
    return bytes;
}

/// Why some component's escapes stand for no text of the encoding; "" where all do.
std::string ExplainEscapes(const ParsedURI& uri, const std::string& encoding) {
    for (const Component& component : uri.Components()) {
        if (component.stored.find('%') != std::string_view::npos) {
            const auto text = Lum::ConvertText(BytesOf(component.stored, encoding), encoding, "utf-8");
            if (text.status != Lum::ConversionStatus::kDone) {
                return std::string(component.Title()) + " with escapes that are " +
                       Explain(text.status, encoding, "utf-8");
            }
        }
    }
    return {};
}

/// A text as it came, read: in UTF-8 and as a URI, which is in the empty state where there is a reason.
struct Reading {
    /// With an encoding the text and its escapes are bytes of it; without, they are UTF-8. The Transcoder
    /// says nothing of what it cannot convert, so that is found out before a URI takes the text.
    Reading(std::string_view input, const std::string& encoding) : text(input) {
        if (!encoding.empty()) {
            auto converted = Lum::ConvertText(input, encoding, "utf-8");
            if (converted.status != Lum::ConversionStatus::kDone) {
                reason =
                    "byte " + std::to_string(converted.offset) + ": " + Explain(converted.status, encoding, "utf-8");
                offset = converted.offset;
                return;
            }
            text = std::move(converted.text);
        }
        if (!uri.ParseURI(text)) {
            const Lum::URIProblem problem = Lum::ExplainURI(text);
            reason = TextOf(problem.code).what;
            offset = problem.offset;
            length = problem.length;
        } else if (!encoding.empty()) {
            reason = ExplainEscapes(uri, encoding);
            if (!reason.empty()) {
                uri = ParsedURI();
                return;
            }
            uri.FromEncodedString(input, encoding);
            // Reading it in an encoding refuses more.
            reason = uri.IsValidURI() ? "" : "neither host nor path";
        }
    }
    [[nodiscard]] bool IsValid() const { return reason.empty(); }

    std::string text;
    ParsedURI uri;
    std::string reason;                 ///< Why it is not valid.
    std::optional<std::size_t> offset;  ///< Where in the text, if it is at a place.
    std::size_t length = 0;
};

void WriteAsJson(const Reading& reading) {
    const auto& [text, uri, reason, offset, length] = reading;
    JsonLine line;
    line.Add("input", text);
    line.Add("valid", reading.IsValid());
    line.Add("relative", uri.IsRelative());
    line.Add("hierarchical", uri.IsHierarchical());
    for (const Component& component : uri.Components()) {
        line.Add(component.name, component.stored);
    }
    line.Add("text", uri.ToString(false));
    if (!reading.IsValid()) {
        line.Add("reason", reason);
    }
    if (offset) {
        line.Add("offset", *offset);
    }
    std::move(line).Write();
}

std::string Table(const Reading& reading) {
    const auto& [text, uri, reason, offset, length] = reading;
    std::string table;
    table.reserve(1024);
    table += offset ? Marked(text, *offset, length) : Subject(text);
    if (!reading.IsValid()) {
        return table + Row("not valid", Printable(reason));
    }
    table += Row("valid", std::string(uri.IsRelative() ? "relative" : "absolute") +
                              (uri.IsHierarchical() ? ", hierarchical" : ", non-hierarchical"));
    struct Shown {
        std::string_view title;
        std::string stored;
        std::string unescaped;
    };
    std::vector<Shown> shown;
    std::size_t storedColumns = 0;
    for (const Component& component : uri.Components()) {
        if (component.stored.empty()) {
            continue;
        }
        const std::string unescaped = component.get(uri);
        Shown& row = shown.emplace_back(Shown{component.Title(), Printable(component.stored), {}});
        if (component.stored != unescaped) {
            row.unescaped = "  = " + Printable(unescaped);
            storedColumns = std::max(storedColumns, Columns(row.stored));
        }
    }
    for (Shown& row : shown) {
        if (!row.unescaped.empty()) {
            row.stored.append(storedColumns - Columns(row.stored), ' ').append(row.unescaped);
        }
        table += Row(row.title, row.stored);
    }
    if (const std::string port = uri.GetDefaultPort(); !port.empty()) {
        table += Row("default port", port);
    }
    table += Row("text", Printable(uri.ToString(false)));
    return table;
}

}  // namespace

void AddParse(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("parse", "Show the components of URIs, and why a text is not valid");
    struct Options {
        Texts texts;
        std::string encoding;
        std::string format;
        Redaction redaction;
    };
    const auto options = std::make_shared<Options>();
    options->texts.AddTo(*command);
    AddText(*command, "--encoding", options->encoding, "The encoding of the texts and of what their escapes stand for")
        ->option_text("ENC")
        ->check(CheckEncoding);
    auto* format =
        AddText(*command, "--format", options->format, "Print a line of this form: {host}, {path:raw}, \\t, ...");
    format->option_text("TEXT")->excludes("--json")->check(LineFormat::Check);
    options->redaction.AddTo(*command);
    options->texts.AddArguments(*command, "URI", "The URIs");
    command->callback([options, format, &status] {
        bool isFirst = true;
        const LineFormat line(options->format);
        const auto show = [&](std::string_view given) {
            const std::string text = options->redaction.Of(given);
            const Reading reading(text, options->encoding);
            if (!format->empty()) {
                options->texts.Write(line.Filled(reading.uri, text, reading.reason));
            } else if (options->texts.isJson) {
                WriteAsJson(reading);
            } else {
                WriteText((isFirst ? "" : "\n") + Table(reading));
            }
            isFirst = false;
            status |= reading.IsValid() ? 0 : 1;
        };
        options->texts.ForEach(show);
    });
}

}  // namespace Tool
