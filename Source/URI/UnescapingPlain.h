// Decodes escapes in place in plain C++: the definition of what every faster variant gives.
#pragma once

#include <algorithm>
#include <cstddef>

#include "Source/Base/Block16.h"
#include "Source/URI/HexEscape.h"

namespace Lum {

/// Decodes the escapes from `first` to `end` in place and returns the new end. Nothing outside the
/// two is read or written.
using UnescapeFunction = char* (*)(char* first, char* end) noexcept;

/// How far a text is decoded. Works in place because `to` never overtakes `from`.
struct UnescapeCursor {
    const char* from;
    char* to;
};

namespace Plain {

/// Decodes what begins before `stop`, where two more bytes can be read.
template <bool HighBytesOnly>
UnescapeCursor UnescapeUntil(UnescapeCursor cursor, const char* stop) noexcept {
    auto [from, to] = cursor;
    while (from < stop) {
        if (*from != '%') {
            *to++ = *from++;
            continue;
        }
        const int high = HexValue(from[1]);
        const int low = HexValue(from[2]);
        if (!HighBytesOnly && (high | low) >= 0) {
            *to++ = static_cast<char>(high * 16 + low);
            from += 3;
            continue;
        }
        const HexEscape escape = ReadEscape({'%', from[1], from[2]});
        if (HighBytesOnly && static_cast<signed char>(escape.byte) >= 0) {
            to = std::copy_n(from, escape.length, to);
        } else {
            *to++ = escape.byte;
        }
        from += escape.length;
    }
    return {from, to};
}

/// Decodes all that is left before `end`, and returns the end of what was written.
template <bool HighBytesOnly>
char* UnescapeRest(UnescapeCursor cursor, const char* end) noexcept {
    // An escape needs three bytes: the last two start none.
    if (end - cursor.from > 2) {
        cursor = UnescapeUntil<HighBytesOnly>(cursor, end - 2);
    }
    auto [from, to] = cursor;
    if (from != end) {
        *to++ = *from++;
    }
    if (from != end) {
        *to++ = *from;
    }
    return to;
}

template <bool HighBytesOnly>
char* Unescape(char* first, char* end) noexcept {
    constexpr std::ptrdiff_t step = 16;
    // Escapes come in clusters: this far byte by byte before the next look for a clean block.
    constexpr std::ptrdiff_t patience = 2 * step;
    UnescapeCursor cursor{first, first};
    while (end - cursor.from >= patience + 2) {
        cursor = UnescapeUntil<HighBytesOnly>(cursor, cursor.from + patience);
        for (; end - cursor.from >= step; cursor.from += step, cursor.to += step) {
            const Block16 block = Block16::Load(cursor.from);
            if (block.Equals('%') != 0) {
                break;
            }
            block.Store(cursor.to);
        }
    }
    return UnescapeRest<HighBytesOnly>(cursor, end);
}

}  // namespace Plain
}  // namespace Lum
