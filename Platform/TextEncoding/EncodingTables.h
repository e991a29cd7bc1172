// Tables of encodings that have one byte or two a character, made of ICU's answers when they are first needed.
//
// A table holds what is one unit of UTF-16 on one side and one byte or two on the other, and only where ICU
// converts either to the other.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string_view>

namespace Lum::Internal::TextConversion {

/// What is in no table. No character is this unit, and no code of two bytes has a 0 byte.
constexpr std::uint16_t kNone = 0xFFFF;

/// From 16 bits to 16 bits, in pages of which those without an entry are one.
class PagedTable {
public:
    PagedTable() {
        m_Empty.fill(kNone);
        m_Pages.fill(&m_Empty);
    }
    PagedTable(const PagedTable&) = delete;
    PagedTable& operator=(const PagedTable&) = delete;
    ~PagedTable() {
        for (const Page* const page : m_Pages) {
            if (page != &m_Empty) {
                delete page;
            }
        }
    }

    [[nodiscard]] std::uint32_t operator()(std::uint32_t high, std::uint32_t low) const noexcept {
        return (*m_Pages[high])[low];
    }
    [[nodiscard]] std::uint32_t operator[](std::uint32_t index) const noexcept {
        return (*this)(index >> 8, index & 0xFF);
    }
    void Set(std::uint32_t index, std::uint32_t value) {
        Page*& page = m_Pages[index >> 8];
        if (page == &m_Empty) {
            page = new Page(m_Empty);
        }
        (*page)[index & 0xFF] = static_cast<std::uint16_t>(value);
    }

private:
    using Page = std::array<std::uint16_t, 256>;

    Page m_Empty;
    std::array<Page*, 256> m_Pages;
};

/// Some 10 KB where each character is one byte, and up to 200 KB where some are two.
struct Tables {
    Tables() { singles.fill(kNone); }

    std::array<std::uint16_t, 256> singles;  ///< The units of codes of one byte.
    PagedTable pairs;                        ///< The units of codes of two bytes, the first above the second.
    PagedTable codes;                        ///< By unit: a byte, or the first of two below the second.
    std::array<bool, 256> isFirstOfTwo{};
    bool hasTwo = false;  ///< Whether any byte is the first of two.
    /// All bytes below this one are the ASCII characters that they look like. The loops skip blocks of them.
    std::uint32_t asciiEnd = 0;
    bool isUsable = false;
};

/// One for each name that was asked for, kept for the life of the process. From any thread at any time.
class TabledEncoding {
public:
    /// The encoding that ICU has under `name`, which must stay where it is. Null if it has none, or if one that
    /// keeps a state or that is of another kind.
    [[nodiscard]] static TabledEncoding* Find(std::string_view name);

    [[nodiscard]] std::string_view Name() const noexcept { return m_Name; }
    /// Makes the tables at the first call, which takes up to some milliseconds.
    [[nodiscard]] const Tables& GetTables();

private:
    explicit TabledEncoding(std::string_view name) : m_Name(name) {}

    const std::string_view m_Name;
    bool m_IsOfTheKind = false;
    std::atomic<const Tables*> m_Tables{nullptr};
    TabledEncoding* m_Older = nullptr;
};

}  // namespace Lum::Internal::TextConversion
