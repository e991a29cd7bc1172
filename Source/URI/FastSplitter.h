// Splits the forms that nearly every text has, "scheme://authority/path?query#fragment" and a plain relative
// path, in one pass over blocks of sixteen bytes.
//
// Any text that is not certainly of these forms is left to SplitURI. For the others the result must be the one
// that SplitURI gives. One pass is enough because several delimiters are searched for at once: if the first of
// ":/?#" is a ":", the scheme ends there whatever follows, and if the first of "/?#" behind "//" is a "/", the
// authority ends there.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <Lum/URISplitter.h>

#include "Source/Base/Block16.h"
#include "Source/URI/Authority.h"

namespace Lum::Internal {

/// Where the pieces of a text of common form are. Only numbers and flags, so that the compiler can keep them in
/// registers until the pieces are stored.
struct CommonForm {
    bool isCommon = false;  ///< If false, nothing below has a meaning.
    bool hasScheme = false;
    bool schemeIsLetters = true;
    bool schemeHasUpper = false;
    bool authorityHasUpper = false;
    bool authorityHasDelimiters = false;  ///< A ":" or "@": SplitAuthority is needed.
    bool restHasDelimiters = false;       ///< A "#", "?" or "\\" from the path on: SplitRest is needed.
    std::size_t schemeEnd = 0;
    std::size_t authorityStart = 0;
    std::size_t pathStart = 0;

    friend bool operator==(const CommonForm&, const CommonForm&) = default;
};

/// Whether there is a "#", "?" or "\\" at or behind `start`.
template <class Block>
[[gnu::always_inline]] inline bool PathNeedsSplitting(const BlockedText<Block>& blocks, std::size_t size,
                                                      std::size_t start) noexcept {
    for (std::size_t i = start; i < size; i += BlockedText<Block>::kStep) {
        const auto part = blocks.At(i);
        if ((part.block.template EqualsAny<kFragmentStart.mark, kQueryStart.mark, '\\'>() & part.fresh) != 0) {
            return true;
        }
    }
    return false;
}

/// The bits of the bytes of the first block that can end a scheme or make the text one without a scheme.
template <class Block>
[[gnu::always_inline]] inline std::uint32_t SchemeDelimiters(const Block& head) noexcept {
    return head.template EqualsAny<kSchemeEnd.mark, kPathStart.mark, kQueryStart.mark, kFragmentStart.mark>();
}

/// Splits `text` and returns true if its first block shows that it has no scheme. Otherwise returns false.
template <class Block = Block16>
bool SplitPlainRelative(std::string_view text, URIPieces& pieces) noexcept {
    const BlockedText<Block> blocks(text);
    const std::uint32_t delimiters = SchemeDelimiters(blocks.At(0).block);
    if (delimiters == 0 && text.size() > BlockedText<Block>::kStep) {
        return false;
    }
    const auto first = static_cast<std::size_t>(std::countr_zero(delimiters));
    if (delimiters == 0 || text[first] == kPathStart.mark) {
        if (PathNeedsSplitting(blocks, text.size(), 0)) {
            SplitRest<BlockSearch>(text, pieces);
        } else {
            pieces.path = text;
        }
        return true;
    }
    if (text[first] == kSchemeEnd.mark) {
        return false;
    }
    // No ":" comes before the first "?" or "#". If the path ends there, it has none.
    SplitRest<BlockSearch>(text, pieces);
    return pieces.path.size() == first;
}

template <class Block = Block16>
[[gnu::always_inline]] inline CommonForm FindCommonForm(std::string_view text) noexcept {
    constexpr std::size_t step = BlockedText<Block>::kStep;
    const BlockedText<Block> blocks(text);
    const Block head = blocks.At(0).block;
    const std::uint32_t delimiters = SchemeDelimiters(head);
    const auto first = static_cast<std::size_t>(std::countr_zero(delimiters | (1U << step)));
    CommonForm form;
    if (first == step ? text.size() <= step : text[first] == kPathStart.mark) {
        form.isCommon = true;
        form.restHasDelimiters = PathNeedsSplitting(blocks, text.size(), 0);
        return form;
    }
    if (first == step || !text.substr(first).starts_with("://") ||
        text.substr(first + 3).starts_with(kAuthorityStart)) {
        return form;
    }
    const std::uint32_t schemeBits = (1U << first) - 1;
    form.hasScheme = true;
    form.schemeEnd = first;
    form.schemeIsLetters = (~head.Letters() & schemeBits) == 0;
    form.schemeHasUpper = (head.InRange('A', 'Z') & schemeBits) != 0;

    form.authorityStart = first + 3;
    form.pathStart = text.size();
    std::uint32_t upper = 0;
    std::uint32_t delimitersInside = 0;
    for (std::size_t i = form.authorityStart; i < text.size(); i += step) {
        const auto part = blocks.At(i);
        const std::uint32_t ends =
            part.block.template EqualsAny<kPathStart.mark, kQueryStart.mark, kFragmentStart.mark>() & part.fresh;
        // The bits before the first end; all of them where there is none.
        const std::uint32_t inside = part.fresh & (ends - 1) & ~ends;
        upper |= part.block.InRange('A', 'Z') & inside;
        delimitersInside |= part.block.template EqualsAny<kPortStart.mark, kUserInfoEnd.mark>() & inside;
        if (ends != 0) {
            form.pathStart = part.start + static_cast<std::size_t>(std::countr_zero(ends));
            break;
        }
    }
    form.isCommon = form.pathStart == text.size() || text[form.pathStart] == kPathStart.mark;
    form.authorityHasUpper = upper != 0;
    form.authorityHasDelimiters = delimitersInside != 0;
    form.restHasDelimiters = PathNeedsSplitting(blocks, text.size(), form.pathStart);
    return form;
}

}  // namespace Lum::Internal
