// A text in blocks of sixteen bytes, none of which reaches outside it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Source/Base/Block16.h"

namespace Lum {

/// A text below sixteen bytes is read as if NULs followed it; the last block of a longer one overlaps
/// the block before it.
template <class Block>
class BlockedText {
public:
    static constexpr std::size_t kStep = 16;

    explicit BlockedText(std::string_view text) noexcept : m_Text(text) {}

    struct Part {
        Block block;
        std::size_t start;    ///< The place in the text of the block's first byte.
        std::uint32_t fresh;  ///< The bits of the bytes asked for; those before overlap.
    };
    /// The block that holds the place `from`, which lies in the text or is 0.
    [[nodiscard]] Part At(std::size_t from) const noexcept {
        if (m_Text.size() < kStep) {
            return {Block::LoadShort(m_Text.data(), m_Text.size()), 0, ~std::uint32_t{0} << from};
        }
        const std::size_t start = std::min(from, m_Text.size() - kStep);
        return {Block::Load(m_Text.data() + start), start, ~std::uint32_t{0} << (from - start)};
    }

private:
    std::string_view m_Text;
};

}  // namespace Lum
