// lum parse: what was found in each URI, as a table or as JSON, and why a text is not valid.
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>
#include <Lum/URI.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Output.h"

namespace Tool {
namespace {

/// A component's name in the output, and its text in both forms.
struct Component {
    std::string_view name;
    std::string stored;
    std::string unescaped;
};

/// A URI whose stored components can be read.
class ParsedURI : public Lum::URI {
public:
    using URI::URI;

    [[nodiscard]] std::array<Component, 9> Components() const {
        return {{{"scheme", m_Scheme, GetScheme()},
                 {"user", m_Username, GetUsername()},
                 {"password", m_Password, GetPassword()},
                 {"host", m_Authority, GetAuthority()},
                 {"port", m_ServerPort, GetServerPort()},
                 {"path", m_Path, GetPath()},
                 {"query", m_Query, GetQuery(true)},
                 {"fragment", m_Fragment, GetFragment()},
                 {"nonHierarchical", m_NonHierarchical, GetNonHierarchical()}}};
    }
};

constexpr std::string_view Describe(Lum::URIProblemCode code) {
    switch (code) {
        case Lum::URIProblemCode::kValid:
            return "valid";
        case Lum::URIProblemCode::kSchemeTooShort:
            return "scheme too short";
        case Lum::URIProblemCode::kSchemeNotLetters:
            return "scheme with a character that is no letter";
        case Lum::URIProblemCode::kBackslashInPath:
            return "backslash in the path";
        case Lum::URIProblemCode::kBackslashInNonHierarchical:
            return "backslash in the non-hierarchical part";
        case Lum::URIProblemCode::kSchemeUnknown:
            return "scheme \"unknown\"";
    }
    return "not valid";
}

/// A text as it came, read: in UTF-8 and as a URI.
struct Reading {
    /// With an encoding the text and its escapes are bytes of it; without, they are UTF-8.
    Reading(std::string_view input, const std::string& encoding) : text(input) {
        if (encoding.empty()) {
            uri = URI::StringProxy(input);
        } else {
            uri.FromEncodedString(input, encoding);
            text = Lum::Transcoder::EncodingToUTF8(text, encoding);
        }
        problem = Lum::ExplainURI(text);
    }
    /// Reading it in an encoding refuses more: a URI without host and path.
    [[nodiscard]] bool IsValid() const { return problem.code == Lum::URIProblemCode::kValid && uri.IsValidURI(); }

    using URI = Lum::URI;
    std::string text;
    ParsedURI uri;
    Lum::URIProblem problem{};
};

void WriteAsJson(const Reading& reading) {
    const auto& [text, uri, problem] = reading;
    nlohmann::ordered_json object{
        {"input", text},
        {"valid", uri.IsValidURI()},
        {"relative", uri.IsRelative()},
        {"hierarchical", uri.IsHierarchical()},
    };
    for (auto& component : uri.Components()) {
        object[std::string(component.name)] = std::move(component.stored);
    }
    object["text"] = uri.ToString(false);
    if (problem.code != Lum::URIProblemCode::kValid) {
        object["reason"] = Describe(problem.code);
        object["offset"] = problem.offset;
    }
    WriteJson(object);
}

std::string Table(const Reading& reading) {
    const auto& [text, uri, problem] = reading;
    std::string table = Printable(text) + '\n';
    if (problem.code != Lum::URIProblemCode::kValid) {
        const std::size_t width = Columns(Printable(text.substr(problem.offset, problem.length)));
        table.append(Columns(Printable(text.substr(0, problem.offset))), ' ');
        table.append(std::max<std::size_t>(width, 1), '^');
        table += '\n';
        table += Row("not valid", Describe(problem.code));
        return table;
    }
    if (!reading.IsValid()) {
        return table + Row("not valid", "neither host nor path");
    }
    table += Row("valid", std::string(uri.IsRelative() ? "relative" : "absolute") +
                              (uri.IsHierarchical() ? ", hierarchical" : ", non-hierarchical"));
    const auto components = uri.Components();
    std::size_t storedColumns = 0;
    for (const Component& component : components) {
        if (component.stored != component.unescaped) {
            storedColumns = std::max(storedColumns, Columns(Printable(component.stored)));
        }
    }
    for (const Component& component : components) {
        if (!component.stored.empty()) {
            std::string value = Printable(component.stored);
            if (component.stored != component.unescaped) {
                value.append(storedColumns - Columns(value), ' ').append("  = ").append(Printable(component.unescaped));
            }
            table += Row(component.name == "nonHierarchical" ? "non-hierarchical" : component.name, value);
        }
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
        bool json = false;
        std::string encoding;
        std::vector<std::string> uris;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    AddText(*command, "--encoding", options->encoding, "The encoding of the texts and of what their escapes stand for")
        ->option_text("ENC")
        ->check([](const std::string& name) {
            return Lum::EncodingToCharSetID(name) == 0xFFFF ? "no encoding \"" + name + '"' : std::string();
        });
    AddTexts(*command, "URI", options->uris, "The URIs; without any, the lines of standard input");
    command->callback([options, &status] {
        bool isFirst = true;
        const auto show = [&](std::string_view text) {
            const Reading reading(text, options->encoding);
            if (options->json) {
                WriteAsJson(reading);
            } else {
                WriteText((isFirst ? "" : "\n") + Table(reading));
            }
            isFirst = false;
            status |= reading.IsValid() ? 0 : 1;
        };
        ForEachText(options->uris, show);
    });
}

}  // namespace Tool
