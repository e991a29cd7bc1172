// Why a text is not a valid URI: the first fault, and where it stands.
//
// This is a question about text alone. It builds no record, allocates nothing and can be asked at
// compile time; it finds a fault exactly where Lum::URI's IsValidURI answers false.
#pragma once

#include <cstddef>
#include <string_view>

namespace Lum {

/// The faults a text can have, in the order in which validation looks for them.
enum class URIProblemCode {
    kValid = 0,                   ///< No fault.
    kSchemeTooShort,              ///< Fewer than two characters before the ":" ("c:/dir", ":x").
    kSchemeNotLetters,            ///< A scheme character that is no ASCII letter ("h2:x").
    kBackslashInPath,             ///< A "\" in the path of a hierarchical URI or relative reference.
    kBackslashInNonHierarchical,  ///< A "\" in the part of a non-hierarchical URI ("mailto:a\b").
    kSchemeUnknown,               ///< "unknown://...": the word that marks the empty state.
};

/// A fault and its place: `length` bytes from `offset` in the text that was asked about.
/// A valid text has offset and length 0. A scheme too short is marked whole (its length is 0 or 1);
/// of a scheme's characters, or of the backslashes, the first bad byte is marked.
struct URIProblem {
    URIProblemCode code = URIProblemCode::kValid;
    std::size_t offset = 0;
    std::size_t length = 0;

    friend constexpr bool operator==(const URIProblem&, const URIProblem&) = default;
};

/// The first fault of `text`, in the order of validation.
/// `ExplainURI("http://h/a\\b")` is {kBackslashInPath, 10, 1}; `ExplainURI("a/b")` is {kValid, 0, 0}.
/// Any bytes are accepted. Linear in the length; never throws.
[[nodiscard]] constexpr URIProblem ExplainURI(std::string_view text) noexcept {
    constexpr auto npos = std::string_view::npos;
    // The fragment starts at the last "#", the query at the last "?" before it.
    std::string_view rest = text.substr(0, text.rfind('#'));
    rest = rest.substr(0, rest.rfind('?'));
    const std::size_t colon = rest.find(':');
    if (colon == npos || rest.find('/') < colon) {
        const std::size_t backslash = rest.find('\\');
        return backslash == npos ? URIProblem{} : URIProblem{URIProblemCode::kBackslashInPath, backslash, 1};
    }
    if (colon < 2) {
        return {URIProblemCode::kSchemeTooShort, 0, colon};
    }
    for (std::size_t i = 0; i < colon; ++i) {
        const char folded = static_cast<char>(rest[i] | 0x20);
        if (folded < 'a' || folded > 'z') {
            return {URIProblemCode::kSchemeNotLetters, i, 1};
        }
    }
    std::size_t start = colon + 1;
    if (!rest.substr(start).starts_with("//")) {
        const std::size_t backslash = rest.find('\\', start);
        return backslash == npos ? URIProblem{} : URIProblem{URIProblemCode::kBackslashInNonHierarchical, backslash, 1};
    }
    start += 2;
    if (rest.substr(start).starts_with("//")) {
        // Further slashes before the host do not count ("file://///server/share").
        const std::size_t host = rest.find_first_not_of('/', start);
        start = host == npos ? rest.size() : host;
    }
    const std::size_t path = rest.find('/', start);
    const std::size_t backslash = path == npos ? npos : rest.find('\\', path);
    if (backslash != npos) {
        return {URIProblemCode::kBackslashInPath, backslash, 1};
    }
    constexpr std::string_view unknown = "unknown";
    bool isUnknown = colon == unknown.size();
    for (std::size_t i = 0; isUnknown && i < colon; ++i) {
        isUnknown = static_cast<char>(rest[i] | 0x20) == unknown[i];
    }
    return isUnknown ? URIProblem{URIProblemCode::kSchemeUnknown, 0, unknown.size()} : URIProblem{};
}

}  // namespace Lum
