// Escaping and unescaping in blocks of sixteen bytes, and the operations of Lum::URI over them.
//
// Output is collected on the stack first, so that a short result costs one allocation of its exact size. A block
// that holds nothing to escape is copied whole; the bytes of other blocks are looked up in a table. Unescaping
// works within the string.
#include "Source/URI/Escaping.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <functional>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/Block16.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/Lengths.h"
#include "Source/URI/Authority.h"
#include "Source/URI/Unescaping.h"

namespace Lum::Internal {

namespace {

constexpr std::size_t kStep = 16;
constexpr std::uint32_t kWholeBlock = 0xFFFF;

/// Collects a text of unknown length on the stack, in pieces of at most kPiece bytes at a time.
class Collector {
public:
    static constexpr std::size_t kPiece = 3 * kStep;

    explicit Collector(std::string_view start) {
        if (start.size() <= kCapacity) {
            std::memcpy(m_Buffer.data(), start.data(), start.size());
            m_Used = start.size();
        } else {
            m_Result = start;
        }
    }

    /// Where to write the next piece: kPiece bytes, and up to a block more, may be written there.
    char* Next(std::size_t expectedRest) {
        if (m_Used > kCapacity) {
            ReserveFor(m_Result, std::uint64_t{m_Result.size()} + m_Used + expectedRest);
            m_Result.append(m_Buffer.data(), m_Used);
            m_Used = 0;
        }
        return m_Buffer.data() + m_Used;
    }
    void Wrote(std::size_t size) noexcept { m_Used += size; }

    std::string Take() && {
        if (m_Result.empty()) {
            return {m_Buffer.data(), m_Used};
        }
        m_Result.append(m_Buffer.data(), m_Used);
        return std::move(m_Result);
    }

private:
    static constexpr std::size_t kCapacity = 1024;
    std::array<char, kCapacity + kPiece + kStep> m_Buffer;
    std::size_t m_Used = 0;
    std::string m_Result;
};

/// Writes what `c` becomes to `to` (four bytes may be written) and returns the end of it.
template <class Set>
char* EscapeByte(char c, const Set& set, char* to) noexcept {
    const EscapeOutput output = set.OutputFor(c);
    std::memcpy(to, output.data(), output.size());
    return to + output.back();
}

/// Escapes `text`, whose first `clean` bytes need none.
template <class Set>
std::string EscapeFrom(std::string_view text, std::size_t clean, const Set& set) {
    Collector out(text.substr(0, clean));
    const char* from = text.data() + clean;
    const char* const end = text.data() + text.size();
    while (static_cast<std::size_t>(end - from) >= kStep) {
        char* const start = out.Next(static_cast<std::size_t>(end - from));
        const Block16 block = Block16::Load(from);
        if (block.InAnyRange(set.KeptRanges()) == kWholeBlock) {
            block.Store(start);
            out.Wrote(kStep);
        } else {
            char* to = start;
            for (std::size_t i = 0; i < kStep; ++i) {
                to = EscapeByte(from[i], set, to);
            }
            out.Wrote(static_cast<std::size_t>(to - start));
        }
        from += kStep;
    }
    char* const start = out.Next(static_cast<std::size_t>(end - from));
    char* to = start;
    while (from != end) {
        to = EscapeByte(*from++, set, to);
    }
    out.Wrote(static_cast<std::size_t>(to - start));
    return std::move(out).Take();
}

/// The position of the first member, or the size of `text`.
template <class Set>
std::size_t FindMemberOf(std::string_view text, const Set& set) noexcept {
    const std::size_t size = text.size();
    if (size < kStep) {
        std::size_t i = 0;
        while (i < size && !set.Contains(text[i])) {
            ++i;
        }
        return i;
    }
    const auto search = [&](std::size_t start) {
        std::uint32_t candidates = ~Block16::Load(text.data() + start).InAnyRange(set.KeptRanges()) & kWholeBlock;
        for (; candidates != 0; candidates &= candidates - 1) {
            const std::size_t at = start + static_cast<std::size_t>(std::countr_zero(candidates));
            if (set.Contains(text[at])) {
                return at;
            }
        }
        return size;
    };
    const std::size_t last = size - kStep;
    for (std::size_t start = 0; start < last; start += kStep) {
        if (const std::size_t at = search(start); at != size) {
            return at;
        }
    }
    return search(last);
}

template <class Set>
std::string EscapeMembers(std::string&& text, const Set& set) {
    const std::size_t clean = FindMemberOf(text, set);
    return clean == text.size() ? std::move(text) : EscapeFrom(text, clean, set);
}

/// NUL, the controls and the bytes that a caller lists. Answers as an EscapeSet does, but is quick to make: a set of
/// this kind is used once.
class ListedBytes {
public:
    explicit ListedBytes(std::string_view list) noexcept {
        std::fill_n(m_Members.begin(), 0x20, kMember);
        m_Members[0x7F] = kMember;
        for (const char c : list) {
            m_Members[static_cast<unsigned char>(c)] = kMember;
        }
        // Nearly every text is made of these.
        std::array<ByteRange, 4> ranges{{{'a', 'z'}, {'A', 'Z'}, {'0', '9'}, {0x80, 0xFF}}};
        const auto isKept = [&](ByteRange range) {
            return std::memchr(m_Members.data() + range.low, kMember, range.high - range.low + 1U) == nullptr;
        };
        if (const auto* const kept = std::find_if(ranges.begin(), ranges.end(), isKept); kept != ranges.end()) {
            std::replace_if(ranges.begin(), ranges.end(), std::not_fn(isKept), ByteRange(*kept));
            m_HasKeptRanges = true;
            m_Kept = ByteRanges<4>(ranges);
        }
    }

    [[nodiscard]] bool Contains(char c) const noexcept { return m_Members[static_cast<unsigned char>(c)] == kMember; }
    [[nodiscard]] EscapeOutput OutputFor(char c) const noexcept {
        return Contains(c) ? kEscapes[static_cast<unsigned char>(c)] : EscapeOutput{c, 0, 0, 1};
    }
    /// False if none of the ranges is free of members.
    [[nodiscard]] bool HasKeptRanges() const noexcept { return m_HasKeptRanges; }
    [[nodiscard]] const ByteRanges<4>& KeptRanges() const noexcept { return m_Kept; }

private:
    static constexpr char kMember = 1;
    std::array<char, 256> m_Members{};
    bool m_HasKeptRanges = false;
    ByteRanges<4> m_Kept;
};

template <class Set>
void EscapeBackwards(std::string& text, const Set& set) {
    const auto escapes = std::count_if(text.begin(), text.end(), [&](char c) { return set.Contains(c); });
    std::size_t from = text.size();
    ReserveFor(text, std::uint64_t{from} + 2 * static_cast<std::uint64_t>(escapes));
    text.resize(from + 2 * static_cast<std::size_t>(escapes));
    // From the back, so that nothing is overwritten before it is read.
    for (std::size_t to = text.size(); to != from;) {
        const EscapeOutput output = set.OutputFor(text[--from]);
        to -= static_cast<std::size_t>(output.back());
        std::copy_n(output.data(), output.back(), text.data() + to);
    }
}

}  // namespace

std::size_t FindMember(std::string_view text, const EscapeSet& set) noexcept { return FindMemberOf(text, set); }

bool IsEscapedBy(std::string_view text, const EscapeSet& set) noexcept {
    for (;;) {
        text.remove_prefix(FindMember(text, set));
        if (text.empty()) {
            return true;
        }
        if (text.size() < 3 || text[0] != '%' || HexValue(text[1]) == kNoDigit || HexValue(text[2]) == kNoDigit) {
            return false;
        }
        const EscapeOutput escape = set.OutputFor(static_cast<char>(HexValue(text[1]) * 16 + HexValue(text[2])));
        if (escape.back() != 3 || escape[1] != text[1] || escape[2] != text[2]) {
            return false;
        }
        text.remove_prefix(3);
    }
}

std::string FastEscapeChars(std::string_view text, const EscapeSet& set) {
    const std::size_t clean = FindMember(text, set);
    return clean == text.size() ? std::string(text) : EscapeFrom(text, clean, set);
}

void AppendEscaped(std::string& out, std::string_view text, const EscapeSet& set) {
    const std::size_t clean = FindMember(text, set);
    out.append(text.data(), clean);
    if (clean != text.size()) {
        out += EscapeFrom(text.substr(clean), 0, set);
    }
}

std::string FastEscapeChars(std::string&& text, const EscapeSet& set) { return EscapeMembers(std::move(text), set); }

void EscapeInPlace(std::string& text, const EscapeSet& set) { EscapeBackwards(text, set); }

namespace {

void UnescapeInPlace(std::string& text, bool highBytesOnly) {
    const std::size_t first = FindFirst(text, '%');
    if (first == std::string::npos) {
        return;
    }
    const UnescapeFunction unescape = highBytesOnly ? Plain::Unescape<true> : FastestUnescape();
    const char* const end = unescape(text.data() + first, text.data() + text.size());
    text.resize(static_cast<std::size_t>(end - text.data()));
}

}  // namespace

std::string UnescapeText(std::string&& text, bool highBytesOnly) {
    UnescapeInPlace(text, highBytesOnly);
    return std::move(text);
}

std::string UnescapeText(std::string_view text, bool highBytesOnly) {
    return UnescapeText(std::string(text), highBytesOnly);
}

}  // namespace Lum::Internal

namespace Lum {

using namespace Internal;

URI::StringProxy URI::Escape(StringProxy text) { return FastEscapeChars(std::move(text.m_Text), URIexcludedBitMap); }

URI::StringProxy URI::EscapeChars(StringProxy text, StringProxy chars) {
    const ListedBytes set(chars.m_Text);
    if (set.HasKeptRanges()) {
        return EscapeMembers(std::move(text.m_Text), set);
    }
    EscapeBackwards(text.m_Text, set);
    return text;
}

URI::StringProxy URI::Unescape(StringProxy text, bool highBytesOnly) {
    UnescapeInPlace(text.m_Text, highBytesOnly);
    return text;
}

int URI::ParseHex(const std::string& triple, char& out) {
    HexEscape escape{'\0', 1};
    if (triple.size() == 3) {
        escape = ReadEscape({triple[0], triple[1], triple[2]});
    } else if (!triple.empty()) {
        const std::size_t first = triple.find_first_not_of(' ');
        escape.byte = triple[first == std::string::npos ? 0 : first];
    }
    out = escape.byte;
    return escape.length;
}

void URI::MakeLower(std::string& text) {
    for (char& c : text) {
        c = ToAsciiLower(c);
    }
}

bool URI::VerifyAlpha(StringProxy text) { return IsAsciiLetters(text.m_Text); }

bool URI::IsIPv6(const std::string& host) { return IsIPv6Literal(host); }

}  // namespace Lum
