// A question for each oddity, asked of the pieces of a text.
#include "tools/lum/Oddities.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <Lum/PathView.h>
#include <Lum/URIProblem.h>
#include <Lum/URISplitter.h>
#include <nlohmann/json.hpp>

#include "OdditiesJson.h"
#include "tools/lum/Components.h"

namespace Tool {
namespace {

constexpr std::size_t npos = std::string_view::npos;

/// A text, where its pieces are, and what the URI holds, which is nothing where the text is not valid.
struct Examined {
    std::string_view text;
    Lum::Internal::URIPieces pieces;
    Lum::URIProblemCode problem;
    std::string host, port, path;
    ParsedURI uri;
};

bool Has(std::string_view text, std::string_view part) { return text.find(part) != npos; }
bool IsSpecial(const Examined& s) {
    constexpr std::array<const char*, 6> schemes{"http", "https", "ws", "wss", "ftp", "file"};
    return std::any_of(schemes.begin(), schemes.end(), [&](const char* scheme) { return s.uri.IsOfType(scheme); });
}
bool HasDotSegment(const Examined& s) {
    const auto isDots = [](Lum::PathSegment segment) { return segment.text == "." || segment.text == ".."; };
    return Lum::PathView(s.path).FindFrom(0, isDots) != npos;
}
bool HasHost(const Examined& s) { return s.uri.IsValidURI() && s.uri.IsHierarchical() && !s.uri.IsRelative(); }
bool HasLonePercent(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    for (std::size_t at = text.find('%'); at != npos; at = text.find('%', at + 1)) {
        const std::string_view pair = text.substr(at + 1, 2);
        if (pair.size() < 2 || pair.find_first_not_of(digits) != npos) {
            return true;
        }
    }
    return false;
}
/// Whether the last label of a host is a number, and the host not an IPv4 address in its usual form.
bool IsNumberLike(std::string_view host) {
    const std::string_view last = host.substr(host.rfind('.') + 1);
    const bool isHex = last.starts_with("0x") && last.find_first_not_of("0123456789abcdef", 2) == npos;
    const bool isNumber = isHex || (!last.empty() && last.find_first_not_of("0123456789") == npos);
    const bool isUsual =
        std::count(host.begin(), host.end(), '.') == 3 && host.find_first_not_of("0123456789.") == npos;
    return isNumber && !isUsual;
}

struct Question {
    std::string_view id;
    bool (*touches)(const Examined& s);
};

using enum Lum::URIProblemCode;

constexpr std::array<Question, 25> kQuestions{{
    {"last-question-mark", [](const Examined& s) { return Has(s.pieces.path, "?"); }},
    {"last-number-sign", [](const Examined& s) { return Has(s.pieces.path, "#") || Has(s.pieces.query, "#"); }},
    {"backslash", [](const Examined& s) { return s.problem == kBackslashInPath; }},
    {"backslash-in-authority", [](const Examined& s) { return Has(s.pieces.authority, "\\"); }},
    {"one-letter-scheme",
     [](const Examined& s) { return s.problem == kSchemeTooShort && s.pieces.scheme.size() == 1; }},
    {"scheme-of-letters", [](const Examined& s) { return s.problem == kSchemeNotLetters; }},
    {"scheme-unknown", [](const Examined& s) { return s.problem == kSchemeUnknown; }},
    {"no-scheme", [](const Examined& s) { return !s.pieces.hasScheme && s.pieces.path.starts_with("//"); }},
    {"empty-host", [](const Examined& s) { return HasHost(s) && s.host.empty() && !s.uri.IsOfType("file"); }},
    {"many-slashes", [](const Examined& s) { return Has(s.text, ":////") && s.pieces.isHierarchical && HasHost(s); }},
    {"no-slashes", [](const Examined& s) { return !s.uri.IsHierarchical() && IsSpecial(s); }},
    {"colons-in-host", [](const Examined& s) { return s.host.starts_with('[') && !Has(s.pieces.authority, "["); }},
    {"port-of-letters", [](const Examined& s) { return s.port.find_first_not_of("0123456789") != npos; }},
    {"default-port", [](const Examined& s) { return !s.port.empty() && s.port == s.uri.GetDefaultPort(); }},
    {"dot-segments", [](const Examined& s) { return HasHost(s) && HasDotSegment(s); }},
    {"unescaped",
     [](const Examined& s) {
         const auto needsEscape = [](char c) { return (c >= 0 && c <= ' ') || c == 0x7F || Has("<>\"{}|^`", {&c, 1}); };
         return std::any_of(s.text.begin(), s.text.end(), needsEscape);
     }},
    {"non-ascii-host",
     [](const Examined& s) {
         return std::any_of(s.host.begin(), s.host.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
     }},
    {"number-host", [](const Examined& s) { return IsNumberLike(s.host); }},
    {"two-at-signs", [](const Examined& s) { return s.pieces.authority.find('@') != s.pieces.authority.rfind('@'); }},
    {"lone-percent", [](const Examined& s) { return HasLonePercent(s.text); }},
    {"drive", [](const Examined& s) { return s.uri.IsOfType("file") && s.path != s.pieces.path; }},
    {"query-alone", [](const Examined& s) { return s.text.starts_with('?'); }},
    {"dots-behind-root",
     [](const Examined& s) { return s.uri.IsRelative() && s.path.starts_with('/') && HasDotSegment(s); }},
    {"base-without-path", [](const Examined& s) { return HasHost(s) && !s.host.empty() && s.path.empty(); }},
    {"escaped-slash", [](const Examined& s) { return Has(s.path, "%2F") || Has(s.path, "%2f"); }},
}};

}  // namespace

std::vector<Oddity> OdditiesOf(std::string_view text) {
    Examined subject{text, Lum::Internal::SplitURI(text), Lum::ExplainURI(text).code, {}, {}, {}, {}};
    if (subject.uri.ParseURI(std::string(text))) {
        const auto components = subject.uri.Components();
        subject.host = components[IndexOfComponent("host")].stored;
        subject.port = components[IndexOfComponent("port")].stored;
        subject.path = components[IndexOfComponent("path")].stored;
    }
    std::vector<Oddity> found;
    static const nlohmann::json all = nlohmann::json::parse(kOdditiesJson);
    for (const auto& oddity : all) {
        const std::string id = oddity.at("id");
        const auto* const question =
            std::find_if(kQuestions.begin(), kQuestions.end(), [&](const Question& q) { return q.id == id; });
        if (question != kQuestions.end() && question->touches(subject)) {
            found.push_back({id, oddity.at("says"), oddity.at("why")});
        }
    }
    return found;
}

}  // namespace Tool
