// Why a text is not a valid URI: the first fault, and where it stands.
//
// This is a question about text alone. It builds no record, allocates nothing and can be asked at
// compile time; it finds a fault exactly where Lum::URI's IsValidURI answers false.
#pragma once

#include <cstddef>
#include <string_view>

#include <Lum/URISplitter.h>

namespace Lum {

/// The faults a text can have, in the order in which validation looks for them.
enum class URIProblemCode {
    kValid = 0,                   ///< No fault.
    kSchemeTooShort,              ///< Fewer than two characters before the ":" ("c:/dir", ":x").
    kSchemeNotLetters,            ///< A scheme character that is no ASCII letter ("h2:x").
    kBackslashInPath,             ///< A "\" in the path of a hierarchical URI or relative reference.
    kBackslashInNonHierarchical,  ///< A "\" in the part of a non-hierarchical URI (`mailto:a\b`).
    kSchemeUnknown,               ///< "unknown://...": the word that marks the empty state.
};

/// A fault and its place: `length` bytes from `offset` in the text that was asked about.
/// A valid text has offset and length 0. A scheme too short is marked whole (its length is 0 or 1);
/// of a scheme's characters, or of the backslashes, the first bad byte is marked.
struct URIProblem {
    URIProblemCode code = URIProblemCode::kValid;  ///< The first fault.
    std::size_t offset = 0;                        ///< Where it begins, in bytes.
    std::size_t length = 0;                        ///< How many bytes it has.

    /// Whether code and place are the same.
    friend constexpr bool operator==(const URIProblem&, const URIProblem&) = default;
};

/// The first fault of `text`, in the order of validation.
/// `ExplainURI("http://h/a\\b")` is {kBackslashInPath, 10, 1}; `ExplainURI("a/b")` is {kValid, 0, 0}.
/// Any bytes are accepted. Linear in the length; never throws.
[[nodiscard]] constexpr URIProblem ExplainURI(std::string_view text) noexcept {
    const auto foldedAt = [&](std::size_t i) { return static_cast<char>(text[i] | 0x20); };
    const Internal::URIPieces pieces = Internal::SplitURI(text);
    const std::size_t schemeSize = pieces.scheme.size();
    if (pieces.hasScheme && schemeSize < 2) {
        return {URIProblemCode::kSchemeTooShort, 0, schemeSize};
    }
    // The scheme begins the text.
    for (std::size_t i = 0; i < schemeSize; ++i) {
        if (foldedAt(i) < 'a' || foldedAt(i) > 'z') {
            return {URIProblemCode::kSchemeNotLetters, i, 1};
        }
    }
    if (const std::size_t backslash = pieces.path.find('\\'); backslash != std::string_view::npos) {
        const auto start = static_cast<std::size_t>(pieces.path.data() - text.data());
        return {pieces.isHierarchical ? URIProblemCode::kBackslashInPath : URIProblemCode::kBackslashInNonHierarchical,
                start + backslash, 1};
    }
    constexpr std::string_view unknown = "unknown";
    bool isUnknown = pieces.isHierarchical && schemeSize == unknown.size();
    for (std::size_t i = 0; isUnknown && i < schemeSize; ++i) {
        isUnknown = foldedAt(i) == unknown[i];
    }
    return isUnknown ? URIProblem{URIProblemCode::kSchemeUnknown, 0, unknown.size()} : URIProblem{};
}

}  // namespace Lum
