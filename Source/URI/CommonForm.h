// Recognises the forms that nearly every text has, "scheme://authority/path?query#fragment" and a
// plain relative path, in one pass over blocks of sixteen bytes. Whatever is not certainly of these
// forms is left to Cut, with whose answer this one must agree.
//
// Looking for several delimiters at once from the front is what makes the one pass possible: where
// the first of ":/?#" is a ":", the scheme ends there whatever follows, and where the first of "/?#"
// behind "//" is a "/", the authority does.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Source/Base/Block16.h"
#include "Source/Base/BlockedText.h"
#include "Source/URI/Cutter.h"

namespace Lum {

/// Where the pieces of a text of common form lie. Numbers and flags only, so that they stay in
/// registers until the pieces are stored.
struct CommonForm {
    bool isCommon = false;  ///< Otherwise nothing below counts.
    bool hasScheme = false;
    bool schemeIsLetters = true;
    bool schemeHasUpper = false;
    bool authorityHasUpper = false;
    bool authorityHasDividers = false;  ///< A ":" or "@", which CutAuthority is to look at.
    bool restHasTails = false;          ///< A "#", "?" or "\\" from the path on, for CutTails.
    std::size_t schemeEnd = 0;
    std::size_t authorityStart = 0;
    std::size_t pathStart = 0;
};

/// Whether a "#", "?" or "\\" stands at or behind `start`.
template <class Block>
[[gnu::always_inline]] inline bool HasTails(const BlockedText<Block>& blocks, std::size_t size,
                                            std::size_t start) noexcept {
    for (std::size_t i = start; i < size; i += BlockedText<Block>::kStep) {
        const auto part = blocks.At(i);
        if ((part.block.template EqualsAny<'#', '?', '\\'>() & part.fresh) != 0) {
            return true;
        }
    }
    return false;
}

/// Cuts `text` if the first of the delimiters that decide it shows it to have no scheme; otherwise
/// returns false.
template <class Block = Block16>
bool CutPlainlyRelative(std::string_view text, PathAndTails& cuts) noexcept {
    const BlockedText<Block> blocks(text);
    const std::uint32_t delimiters = blocks.At(0).block.template EqualsAny<':', '/', '?', '#'>();
    if (delimiters == 0 && text.size() > BlockedText<Block>::kStep) {
        return false;
    }
    const auto first = static_cast<std::size_t>(std::countr_zero(delimiters));
    if (delimiters == 0 || text[first] == '/') {
        if (HasTails(blocks, text.size(), 0)) {
            cuts = CutTails(text);
        } else {
            cuts.path = text;
        }
        return true;
    }
    if (text[first] == ':') {
        return false;
    }
    // No ":" before the first "?" or "#"; the path has none if it ends there.
    cuts = CutTails(text);
    return cuts.path.size() == first;
}

template <class Block = Block16>
[[gnu::always_inline]] inline CommonForm FindCommonForm(std::string_view text) noexcept {
    constexpr std::size_t step = BlockedText<Block>::kStep;
    const BlockedText<Block> blocks(text);
    const Block head = blocks.At(0).block;
    const std::uint32_t delimiters = head.template EqualsAny<':', '/', '?', '#'>();
    const auto first = static_cast<std::size_t>(std::countr_zero(delimiters | (1U << step)));
    CommonForm form;
    if (first == step ? text.size() <= step : text[first] == '/') {
        form.isCommon = true;
        form.restHasTails = HasTails(blocks, text.size(), 0);
        return form;
    }
    if (first == step || !text.substr(first).starts_with("://") || text.substr(first + 3).starts_with("//")) {
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
    std::uint32_t dividers = 0;
    for (std::size_t i = form.authorityStart; i < text.size(); i += step) {
        const auto part = blocks.At(i);
        const std::uint32_t ends = part.block.template EqualsAny<'/', '?', '#'>() & part.fresh;
        // The bits before the first end; all of them where there is none.
        const std::uint32_t inside = part.fresh & (ends - 1) & ~ends;
        upper |= part.block.InRange('A', 'Z') & inside;
        dividers |= part.block.template EqualsAny<':', '@'>() & inside;
        if (ends != 0) {
            form.pathStart = part.start + static_cast<std::size_t>(std::countr_zero(ends));
            break;
        }
    }
    form.isCommon = form.pathStart == text.size() || text[form.pathStart] == '/';
    form.authorityHasUpper = upper != 0;
    form.authorityHasDividers = dividers != 0;
    form.restHasTails = HasTails(blocks, text.size(), form.pathStart);
    return form;
}

}  // namespace Lum
