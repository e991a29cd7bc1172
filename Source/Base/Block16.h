// The Block16 that this build searches with, and a text in such blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Source/Base/Target.h"

#ifdef __SSE2__
#include "Source/Base/Block16Sse2.h"
namespace Lum::Internal {
using Block16 = Sse2::Block16;
}
#elif defined(LUM_HAS_NEON)
#include "Source/Base/Block16Neon.h"
namespace Lum::Internal {
using Block16 = Neon::Block16;
}
#else
#include "Source/Base/Block16Plain.h"
namespace Lum::Internal {
using Block16 = Plain::Block16;
}
#endif

namespace Lum::Internal {

/// A text in blocks, none of which reaches outside it. A text of less than sixteen bytes is read as if NULs
/// followed it; the last block of a longer one overlaps the block before it.
template <class Block>
class BlockedText {
public:
    static constexpr std::size_t kStep = 16;

    explicit BlockedText(std::string_view text) noexcept : m_Text(text) {}

    struct Part {
        Block block;
        std::size_t start;    ///< The position in the text of the block's first byte.
        std::uint32_t fresh;  ///< Bits of the bytes from `from` on; those before it belong to the last block.
    };
    /// The block that holds the position `from`, which lies in the text or is 0.
    [[nodiscard]] Part At(std::size_t from) const noexcept {
        if (m_Text.size() < kStep) {
            return {Block::LoadShort(m_Text.data(), m_Text.size()), 0, ~std::uint32_t{0} << from % kStep};
        }
        const std::size_t start = std::min(from, m_Text.size() - kStep);
        return {Block::Load(m_Text.data() + start), start, ~std::uint32_t{0} << (from - start)};
    }

private:
    std::string_view m_Text;
};

}  // namespace Lum::Internal
