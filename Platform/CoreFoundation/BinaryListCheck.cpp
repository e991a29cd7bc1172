// Checks that a binary property list is one dictionary of strings, before libplist reads it.
//
// The layout is: "bplist00", objects, a table of their offsets, and a trailer of 32 bytes. Byte 6 of the
// trailer is the size of an offset and byte 7 the size of a reference; three numbers of 64 bits follow: the
// number of objects, the index of the root, and the offset of the table. An object begins with its kind and
// a count, four bits each. If the count is F, a number object follows that has the count.
#include "Platform/CoreFoundation/StringTable.h"

#include <cstddef>
#include <cstdint>

namespace Lum::Internal::CoreFoundation {
namespace {

constexpr std::uint64_t kMagicSize = 8;
constexpr std::uint64_t kTrailerSize = 32;
/// A list with fewer bytes for each pair than this was made to take much memory.
constexpr std::uint64_t kLeastBytesPerPair = 8;
/// The total size of the texts, counted as often as they are referred to, may exceed the size of the list by
/// this factor and this constant.
constexpr std::uint64_t kMostTextPerByte = 4;
constexpr std::uint64_t kTextForFree = 0x10000;

enum ElementKind : unsigned { kNumber = 0x1, kAscii = 0x5, kUtf16 = 0x6, kDictionary = 0xD };

class BinaryListChecker {
public:
    explicit BinaryListChecker(std::string_view bytes) : m_Bytes(bytes) {}

    const char* Check() {
        if (m_Bytes.size() < kMagicSize + kTrailerSize + 1 || !m_Bytes.starts_with("bplist00")) {
            return "not a binary property list of version 00";
        }
        const std::uint64_t trailer = m_Bytes.size() - kTrailerSize;
        m_OffsetSize = static_cast<unsigned char>(m_Bytes[static_cast<std::size_t>(trailer + 6)]);
        m_ReferenceSize = static_cast<unsigned char>(m_Bytes[static_cast<std::size_t>(trailer + 7)]);
        m_ObjectCount = Read(trailer + 8, 8);
        const std::uint64_t root = Read(trailer + 16, 8);
        m_Table = Read(trailer + 24, 8);
        const auto isSize = [](std::uint64_t size) { return size >= 1 && size <= 8; };
        if (!isSize(m_OffsetSize) || !isSize(m_ReferenceSize) || m_Table <= kMagicSize || m_Table > trailer ||
            root >= m_ObjectCount || m_ObjectCount > (trailer - m_Table) / m_OffsetSize) {
            return "the property list's trailer leads outside of it";
        }
        Object dictionary{};
        if (!ReadObject(root, dictionary) || dictionary.kind != kDictionary) {
            return "the property list is no dictionary";
        }
        return CheckPairs(dictionary);
    }

private:
    struct Object {
        unsigned kind;
        std::uint64_t count;
        std::uint64_t content;  ///< where it begins
    };

    /// A big-endian number of up to 8 bytes, all inside.
    [[nodiscard]] std::uint64_t Read(std::uint64_t offset, std::uint64_t size) const {
        std::uint64_t number = 0;
        for (const char byte : m_Bytes.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(size))) {
            number = number << 8 | static_cast<unsigned char>(byte);
        }
        return number;
    }

    /// Objects must lie before the table.
    [[nodiscard]] bool IsInside(std::uint64_t offset, std::uint64_t size) const {
        return offset <= m_Table && size <= m_Table - offset;
    }

    bool ReadObject(std::uint64_t index, Object& object) const {
        if (index >= m_ObjectCount) {
            return false;
        }
        const std::uint64_t offset = Read(m_Table + index * m_OffsetSize, m_OffsetSize);
        if (offset < kMagicSize || !IsInside(offset, 1)) {
            return false;
        }
        const std::uint64_t marker = Read(offset, 1);
        object = {static_cast<unsigned>(marker >> 4), marker & 0xF, offset + 1};
        if (object.count != 0xF) {
            return true;
        }
        if (!IsInside(offset + 1, 1)) {
            return false;
        }
        const std::uint64_t number = Read(offset + 1, 1);
        const std::uint64_t size = std::uint64_t{1} << (number & 0xF);
        if (number >> 4 != kNumber || size > 8 || !IsInside(offset + 2, size)) {
            return false;
        }
        object.count = Read(offset + 2, size);
        object.content = offset + 2 + size;
        return true;
    }

    [[nodiscard]] const char* CheckPairs(const Object& dictionary) const {
        const std::uint64_t size = m_Bytes.size();
        if (dictionary.count > size / kLeastBytesPerPair ||
            !IsInside(dictionary.content, 2 * dictionary.count * m_ReferenceSize)) {
            return "the property list has more pairs than bytes for them";
        }
        std::uint64_t textLeft = kMostTextPerByte * size + kTextForFree;
        for (std::uint64_t i = 0; i < 2 * dictionary.count; ++i) {
            Object text{};
            if (!ReadObject(Read(dictionary.content + i * m_ReferenceSize, m_ReferenceSize), text) ||
                (text.kind != kAscii && text.kind != kUtf16) || text.count > size ||
                !IsInside(text.content, text.count * (text.kind == kUtf16 ? 2 : 1))) {
                return "a key or value of the property list is no string";
            }
            if (2 * text.count > textLeft) {
                return "the property list refers to its strings too often";
            }
            textLeft -= 2 * text.count;
        }
        return nullptr;
    }

    std::string_view m_Bytes;
    std::uint64_t m_OffsetSize = 0, m_ReferenceSize = 0, m_ObjectCount = 0, m_Table = 0;
};

}  // namespace

const char* CheckBinaryList(std::string_view bytes) { return BinaryListChecker(bytes).Check(); }

}  // namespace Lum::Internal::CoreFoundation
