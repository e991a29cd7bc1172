// Percent escapes over plain text: which bytes become escapes, and how escapes become bytes again.
//
// Escaping writes "%" and two upper-case digits (RFC 2396, section 2.4.1); unescaping reads
// leniently and never fails. Both take linear time. The static operations of Lum::URI call these functions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Source/Base/Block16.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/CharBitMap.h"
#include "Source/URI/CharacterClasses.h"

namespace Lum::Internal {

/// The text that a byte becomes, one character or three, and behind it its length.
using EscapeOutput = std::array<char, 4>;

/// What each byte becomes if it is escaped.
inline constexpr std::array<EscapeOutput, 256> kEscapes = [] {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<EscapeOutput, 256> escapes{};
    for (std::size_t c = 0; c < escapes.size(); ++c) {
        escapes[c] = {'%', digits[c / 16], digits[c % 16], 3};
    }
    return escapes;
}();

/// A set of bytes to escape, with what each byte becomes.
class EscapeSet {
public:
    consteval explicit EscapeSet(std::string_view text) noexcept {
        const CharBitMap members{text};
        for (std::size_t c = 0; c < m_Outputs.size(); ++c) {
            const auto byte = static_cast<unsigned char>(c);
            m_Outputs[c] = members.Contains(byte) ? kEscapes[c] : EscapeOutput{static_cast<char>(byte), 0, 0, 1};
        }
        m_Kept = ByteRanges<4>(WidestKeptRanges(members));
    }

    [[nodiscard]] constexpr bool Contains(char c) const noexcept { return OutputFor(c).back() != 1; }
    [[nodiscard]] constexpr EscapeOutput OutputFor(char c) const noexcept {
        return m_Outputs[static_cast<unsigned char>(c)];
    }
    /// Ranges of bytes that stay as they are. A block of text that lies within them has nothing to escape.
    [[nodiscard]] constexpr const ByteRanges<4>& KeptRanges() const noexcept { return m_Kept; }

private:
    // No set used here holds every byte, so at least one range is found.
    [[nodiscard]] static consteval std::array<ByteRange, 4> WidestKeptRanges(const CharBitMap& members) noexcept {
        const auto width = [](ByteRange r) { return r.high - r.low; };
        std::array<ByteRange, 4> kept;
        std::size_t found = 0;
        for (unsigned c = 0; c < 256; ++c) {
            if (members.Contains(static_cast<unsigned char>(c))) {
                continue;
            }
            const unsigned low = c;
            while (c < 255 && !members.Contains(static_cast<unsigned char>(c + 1))) {
                ++c;
            }
            const ByteRange range{static_cast<unsigned char>(low), static_cast<unsigned char>(c)};
            if (found < kept.size()) {
                kept[found++] = range;
                continue;
            }
            std::size_t narrowest = 0;
            for (std::size_t i = 1; i < kept.size(); ++i) {
                narrowest = width(kept[i]) < width(kept[narrowest]) ? i : narrowest;
            }
            if (width(range) > width(kept[narrowest])) {
                kept[narrowest] = range;
            }
        }
        for (; found < kept.size(); ++found) {
            kept[found] = kept[0];
        }
        return kept;
    }

    std::array<EscapeOutput, 256> m_Outputs{};
    ByteRanges<4> m_Kept;
};

// What each operation escapes. The texts of the members are in CharacterClasses.h.
inline constexpr EscapeSet URIexcludedBitMap{Classes::URIexcluded};
inline constexpr EscapeSet ModifiedURIEXcludedBitMap{Classes::modifiedExcluded};
inline constexpr EscapeSet URIqueryexcludedBitMap{Classes::URIqueryexcluded};
inline constexpr EscapeSet URInonhierexcludedBitMap{Classes::URInonhierexcluded};
inline constexpr EscapeSet URIhighBytesExcludedBitMap{Classes::HighBytesExcluded()};

static_assert(!URIexcludedBitMap.Contains('\0') && URIexcludedBitMap.Contains('@'));
static_assert(!URInonhierexcludedBitMap.Contains('@') && ModifiedURIEXcludedBitMap.Contains('/'));
static_assert(!URIqueryexcludedBitMap.Contains(';') && URIhighBytesExcludedBitMap.Contains('\xFF'));

/// The position of the first member of `set`, or the size of `text`.
std::size_t FindMember(std::string_view text, const EscapeSet& set) noexcept;
inline bool HasMember(std::string_view text, const EscapeSet& set) noexcept {
    return FindMember(text, set) != text.size();
}

/// Whether escaping what `text` stands for gives `text` again.
bool IsEscapedBy(std::string_view text, const EscapeSet& set) noexcept;

/// `text` with every member of `set` escaped.
std::string FastEscapeChars(std::string_view text, const EscapeSet& set);
/// The same. Returns the given string itself if nothing is to be escaped.
std::string FastEscapeChars(std::string&& text, const EscapeSet& set);

/// The same in the storage of the string, which grows only if the result does not fit it. Byte by byte,
/// for short texts.
void EscapeInPlace(std::string& text, const EscapeSet& set);

/// Appends `text` to `out`, escaped.
void AppendEscaped(std::string& out, std::string_view text, const EscapeSet& set);

/// `text` with its escapes decoded; see URI::Unescape.
std::string UnescapeText(std::string_view text, bool highBytesOnly = false);
/// The same in the storage of the string it was given.
std::string UnescapeText(std::string&& text, bool highBytesOnly = false);

/// A component read unescaped, without a copy if it holds no escape. The stored text must outlive the view and
/// not change.
class UnescapedView {
public:
    explicit UnescapedView(std::string_view stored)
        : m_HasEscapes(FindFirst(stored, '%') != std::string_view::npos), m_Stored(stored) {
        if (m_HasEscapes) {
            m_Text = UnescapeText(stored);
        }
    }
    [[nodiscard]] std::string_view Get() const noexcept { return m_HasEscapes ? std::string_view(m_Text) : m_Stored; }

private:
    bool m_HasEscapes;
    std::string_view m_Stored;
    std::string m_Text;
};

}  // namespace Lum::Internal
