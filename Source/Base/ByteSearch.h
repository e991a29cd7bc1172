// Finds a byte in a text, sixteen bytes a step, in both directions.
//
// The last block overlaps the one before it, so that nothing outside the text is read; texts below
// sixteen bytes are searched byte by byte.
#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#include "Source/Base/Block16.h"

namespace Lum::Internal {

/// The position of the first `wanted` in `text`, or npos.
template <class Block = Block16>
std::size_t FindFirst(std::string_view text, char wanted) noexcept {
    constexpr std::size_t step = 16;
    const std::size_t size = text.size();
    if (size < step) {
        for (std::size_t i = 0; i < size; ++i) {
            if (text[i] == wanted) {
                return i;
            }
        }
        return std::string_view::npos;
    }
    const std::size_t last = size - step;
    for (std::size_t i = 0; i < last; i += step) {
        if (const auto bits = Block::Load(text.data() + i).Equals(wanted); bits != 0) {
            return i + static_cast<std::size_t>(std::countr_zero(bits));
        }
    }
    const auto bits = Block::Load(text.data() + last).Equals(wanted);
    return bits != 0 ? last + static_cast<std::size_t>(std::countr_zero(bits)) : std::string_view::npos;
}

/// The position of the last `wanted` in `text`, or npos.
template <class Block = Block16>
std::size_t FindLast(std::string_view text, char wanted) noexcept {
    constexpr std::size_t step = 16;
    if (text.size() < step) {
        for (std::size_t i = text.size(); i > 0; --i) {
            if (text[i - 1] == wanted) {
                return i - 1;
            }
        }
        return std::string_view::npos;
    }
    for (std::size_t end = text.size(); end > 0; end = end > step ? end - step : 0) {
        const std::size_t at = end > step ? end - step : 0;
        if (const auto bits = Block::Load(text.data() + at).Equals(wanted); bits != 0) {
            return at + static_cast<std::size_t>(std::bit_width(bits)) - 1;
        }
    }
    return std::string_view::npos;
}

}  // namespace Lum::Internal
