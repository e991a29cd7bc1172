// URIs as literals: a text that is not a valid URI does not compile.
//
//     using namespace Lum::Literals;
//     const Lum::URI home = "http://example.org/a%20b"_uri;
//     const Lum::URI wrong = "http://example.org/a\\b"_uri;    // error: ... a backslash in the path
//
// A literal costs what URI's constructor costs. IsValidURI() is true, so that nobody needs to ask.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include <Lum/URI.h>
#include <Lum/URIProblem.h>

namespace Lum {

namespace Internal {

/// The text of a literal, as a template's argument.
template <std::size_t size>
struct LiteralText {
    // NOLINTNEXTLINE(google-explicit-constructor): made from the literal by the compiler.
    consteval LiteralText(const char (&text)[size]) noexcept {
        for (std::size_t i = 0; i < size; ++i) {
            bytes[i] = text[i];
        }
    }
    [[nodiscard]] constexpr std::string_view View() const noexcept { return {bytes.data(), size - 1}; }

    std::array<char, size> bytes{};
};

/// Fails to compile with the reason for a text that is not a valid URI.
template <URIProblemCode code>
consteval void RequireValid() noexcept {
    using enum URIProblemCode;
    static_assert(code != kSchemeTooShort, "not a URI: fewer than two characters in the scheme");
    static_assert(code != kSchemeNotLetters, "not a URI: a character that is no letter in the scheme");
    static_assert(code != kBackslashInPath, "not a URI: a backslash in the path");
    static_assert(code != kBackslashInNonHierarchical, "not a URI: a backslash behind the scheme");
    static_assert(code != kSchemeUnknown, "not a URI: the scheme is the word for no URI");
}

}  // namespace Internal

namespace Literals {

/// The URI of a literal, which is valid. Relative references are valid, "" too.
template <Internal::LiteralText text>
[[nodiscard]] URI operator""_uri() {
    Internal::RequireValid<ExplainURI(text.View()).code>();
    return URI(text.View());
}

}  // namespace Literals
}  // namespace Lum
