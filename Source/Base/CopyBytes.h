// Copies short texts without a call: most pieces of a URI are shorter than what memcpy is made for.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "Source/Base/Block16.h"

namespace Lum {

/// Copies `text` to `to`, writing nothing behind its end, and returns where that is. The two do not
/// overlap.
inline char* CopyBytes(char* to, std::string_view text) noexcept {
    const char* const from = text.data();
    const std::size_t size = text.size();
    // Two copies of a fixed size, overlapping where need be, cover every length of their class.
    if (size >= 16) {
        for (std::size_t i = 0; i < size - 16; i += 16) {
            Block16::Load(from + i).Store(to + i);
        }
        Block16::Load(from + size - 16).Store(to + size - 16);
    } else if (size >= 8) {
        std::memcpy(to, from, 8);
        std::memcpy(to + size - 8, from + size - 8, 8);
    } else if (size >= 4) {
        std::memcpy(to, from, 4);
        std::memcpy(to + size - 4, from + size - 4, 4);
    } else if (size > 0) {
        to[0] = from[0];
        to[size / 2] = from[size / 2];
        to[size - 1] = from[size - 1];
    }
    return to + size;
}

}  // namespace Lum
