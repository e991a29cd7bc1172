// Copies of texts that are mostly too short for a call of memcpy: pieces of a URI, and words of a string.
//
// A length of a class (from 4, from 8, from a block) is covered by copies of fixed sizes that overlap, so
// that no branch depends on the exact length. Nothing is written behind the end.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "Source/Base/Block16.h"

namespace Lum::Internal {

/// Copies `text` to `to`, where they do not overlap, and returns the end of what it wrote.
inline char* CopyBytes(char* to, std::string_view text) noexcept {
    const char* const from = text.data();
    const std::size_t size = text.size();
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

/// Copies `count` units to `to`, where they do not overlap.
inline void CopyShortUnits(unsigned short* to, const unsigned short* from, std::size_t count) noexcept {
    constexpr std::size_t step = 8;
    const auto copy = [&](std::size_t at) {
        Block16::Load(reinterpret_cast<const char*>(from + at)).Store(reinterpret_cast<char*>(to + at));
    };
    if (count > 4 * step) {
        for (std::size_t at = 0; at < count - 2 * step; at += 2 * step) {
            copy(at);
            copy(at + step);
        }
        copy(count - 2 * step);
        copy(count - step);
    } else if (count >= step) {
        // Four blocks, which overlap where the text is shorter than four.
        const std::size_t last = count - step;
        const std::size_t second = std::min(step, last);
        copy(0);
        copy(second);
        copy(last - second);
        copy(last);
    } else if (count >= 4) {
        std::memcpy(to, from, 4 * sizeof *to);
        std::memcpy(to + count - 4, from + count - 4, 4 * sizeof *to);
    } else if (count > 0) {
        to[0] = from[0];
        to[count / 2] = from[count / 2];
        to[count - 1] = from[count - 1];
    }
}

}  // namespace Lum::Internal
