// Internal: a text that a mark divides into pieces, read and edited piece by piece. The queries and paths of
// <Lum/QueryView.h> and <Lum/PathView.h> are such texts; what a piece means is decided there.
//
// The pieces joined by the mark are the text again, whatever it holds: "a&&b" has the pieces "a", "" and "b". The
// empty text has no piece, so that a single empty piece cannot be told from none.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Export.h>

namespace Lum::Internal {

/// The pieces of a text as a forward range of `Piece`, which is made from each one's text.
template <class Piece, char mark>
class PieceView {
public:
    class Iterator {
    public:
        using value_type = Piece;
        using difference_type = std::ptrdiff_t;
        using reference = Piece;
        using pointer = void;
        using iterator_category = std::input_iterator_tag;
        using iterator_concept = std::forward_iterator_tag;

        constexpr Iterator() noexcept = default;

        [[nodiscard]] constexpr Piece operator*() const noexcept {
            return Piece(m_Text.substr(m_Start, m_End - m_Start));
        }
        constexpr Iterator& operator++() noexcept {
            MoveTo(m_End == m_Text.size() ? kBehind : m_End + 1);
            return *this;
        }
        constexpr Iterator operator++(int) noexcept {
            Iterator before = *this;
            ++*this;
            return before;
        }
        friend constexpr bool operator==(const Iterator& a, const Iterator& b) noexcept {
            return a.m_Start == b.m_Start;
        }

    private:
        friend class PieceView;
        static constexpr std::size_t kBehind = std::string_view::npos;

        constexpr Iterator(std::string_view text, std::size_t start) noexcept : m_Text(text) { MoveTo(start); }
        constexpr void MoveTo(std::size_t start) noexcept {
            m_Start = start;
            m_End = start == kBehind ? kBehind : std::min(m_Text.find(mark, start), m_Text.size());
        }

        std::string_view m_Text;
        std::size_t m_Start = kBehind;
        std::size_t m_End = kBehind;
    };

    constexpr explicit PieceView(std::string_view text LUM_LIFETIMEBOUND) noexcept : m_Text(text) {}

    [[nodiscard]] constexpr Iterator begin() const noexcept {
        return Iterator(m_Text, m_Text.empty() ? Iterator::kBehind : 0);
    }
    [[nodiscard]] constexpr Iterator end() const noexcept { return Iterator(); }
    [[nodiscard]] constexpr bool empty() const noexcept { return m_Text.empty(); }
    /// How many pieces there are; linear in the length of the text.
    [[nodiscard]] constexpr std::size_t size() const noexcept {
        return empty() ? 0 : 1 + static_cast<std::size_t>(std::count(m_Text.begin(), m_Text.end(), mark));
    }
    /// The piece at an index, an empty one where there is none. Linear.
    [[nodiscard]] constexpr Piece operator[](std::size_t index) const noexcept {
        for (const Piece piece : *this) {
            if (index-- == 0) {
                return piece;
            }
        }
        return Piece(std::string_view());
    }

    /// The index of the first piece from index `from` on for which `matches` is true, or npos.
    template <class Matches>
    [[nodiscard]] constexpr std::size_t FindFrom(std::size_t from, Matches matches) const {
        std::size_t index = 0;
        for (const Piece piece : *this) {
            if (index >= from && matches(piece)) {
                return index;
            }
            ++index;
        }
        return std::string_view::npos;
    }

private:
    std::string_view m_Text;
};

/// A text of its own whose pieces are changed. Each operation is linear in its length and leaves all bytes but those
/// of the piece that it names, and of one mark beside it, as they are.
template <char mark>
class PieceText {
public:
    explicit PieceText(std::string_view text) : m_Text(text) {}

    [[nodiscard]] const std::string& Get() const noexcept { return m_Text; }
    /// Puts `piece` in front of the one at `index`, behind the last one where there is none.
    void Insert(std::size_t index, std::string piece) {
        if (m_Text.empty()) {
            m_Text = std::move(piece);
        } else if (const auto [start, size] = Find(index); start != std::string::npos) {
            m_Text.insert(start, (piece += mark));
        } else {
            m_Text.append(piece.insert(0, 1, mark));
        }
    }
    /// False, without a change, where there is no piece at `index`.
    bool Replace(std::size_t index, const std::string& piece) {
        const auto [start, size] = Find(index);
        if (start == std::string::npos) {
            return false;
        }
        m_Text.replace(start, size, piece);
        return true;
    }
    /// Removes the piece and the mark behind it, or the one before it if it is the last. False as Replace.
    bool Remove(std::size_t index) {
        const auto [start, size] = Find(index);
        if (start == std::string::npos) {
            return false;
        }
        const bool isLast = start + size == m_Text.size();
        m_Text.erase(isLast && start > 0 ? start - 1 : start, size + 1);
        return true;
    }

private:
    /// Where the piece at `index` is and how long; npos where there is none.
    [[nodiscard]] std::pair<std::size_t, std::size_t> Find(std::size_t index) const noexcept {
        std::size_t start = m_Text.empty() ? std::string::npos : 0;
        for (; index > 0 && start != std::string::npos; --index) {
            const std::size_t end = m_Text.find(mark, start);
            start = end == std::string::npos ? end : end + 1;
        }
        return {start, start == std::string::npos ? 0 : std::min(m_Text.find(mark, start), m_Text.size()) - start};
    }

    std::string m_Text;
};

}  // namespace Lum::Internal
