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
char* EscapeByte(char c, const EscapeSet& set, char* to) noexcept {
    const EscapeSet::Output output = set.OutputFor(c);
    std::memcpy(to, output.data(), output.size());
    return to + output.back();
}

/// Escapes `text`, whose first `clean` bytes need none.
std::string EscapeFrom(std::string_view text, std::size_t clean, const EscapeSet& set) {
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

}  // namespace

std::size_t FindMember(std::string_view text, const EscapeSet& set) noexcept {
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

std::string FastEscapeChars(std::string&& text, const EscapeSet& set) {
    const std::size_t clean = FindMember(text, set);
    return clean == text.size() ? std::move(text) : EscapeFrom(text, clean, set);
}

void EscapeInPlace(std::string& text, const EscapeSet& set) {
    const auto escapes = std::count_if(text.begin(), text.end(), [&](char c) { return set.Contains(c); });
    std::size_t from = text.size();
    ReserveFor(text, std::uint64_t{from} + 2 * static_cast<std::uint64_t>(escapes));
    text.resize(from + 2 * static_cast<std::size_t>(escapes));
    // From the back, so that nothing is overwritten before it is read.
    for (std::size_t to = text.size(); to != from;) {
        const EscapeSet::Output output = set.OutputFor(text[--from]);
        to -= static_cast<std::size_t>(output.back());
        std::copy_n(output.data(), output.back(), text.data() + to);
    }
}

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
    CharBitMap escaped{chars.m_Text};
    escaped.Add('\0');
    for (const char c : Classes::URIcontrol) {
        escaped.Add(c);
    }
    const auto isEscaped = [&](char c) { return escaped.Contains(static_cast<unsigned char>(c)); };
    const auto count = std::count_if(text.m_Text.begin(), text.m_Text.end(), isEscaped);
    if (count == 0) {
        return text;
    }
    std::string result;
    ReserveFor(result, std::uint64_t{text.m_Text.size()} + 2 * static_cast<std::uint64_t>(count));
    for (const char c : text.m_Text) {
        if (isEscaped(c)) {
            constexpr std::string_view digits = "0123456789ABCDEF";
            const auto value = static_cast<unsigned char>(c);
            result += {'%', digits[value / 16], digits[value % 16]};
        } else {
            result += c;
        }
    }
    return result;
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
