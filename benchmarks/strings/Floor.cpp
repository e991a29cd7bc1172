// The least that the results can cost with text behind a counted header: blocks from a list that takes
// them back, a count that is no atomic one, memcpy and memcmp.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "Family.h"
#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

struct Header {
    Header* next;  ///< In the list of free blocks.
    std::int32_t count;
    std::int32_t length;
};

constexpr std::size_t kMostUnits = 1'023;

Header*& FreeBlocks() {
    static constinit Header* blocks = nullptr;
    return blocks;
}

Header* TakeBlock() {
    Header*& blocks = FreeBlocks();
    if (blocks == nullptr) {
        auto* const block = static_cast<Header*>(std::malloc(sizeof(Header) + (kMostUnits + 1) * sizeof(char16_t)));
        block->next = nullptr;
        return block;
    }
    return std::exchange(blocks, blocks->next);
}

/// A text of at most kMostUnits.
class Text {
public:
    explicit Text(std::u16string_view units) : m_Header(TakeBlock()) {
        m_Header->count = 1;
        m_Header->length = static_cast<std::int32_t>(units.size());
        std::memcpy(m_Header + 1, units.data(), units.size() * sizeof(char16_t));
        reinterpret_cast<char16_t*>(m_Header + 1)[units.size()] = 0;
    }
    Text(const Text& other) noexcept : m_Header(other.m_Header) { ++m_Header->count; }
    Text& operator=(const Text&) = delete;
    ~Text() {
        if (--m_Header->count == 0) {
            m_Header->next = std::exchange(FreeBlocks(), m_Header);
        }
    }
    friend bool operator==(const Text& a, const Text& b) {
        const auto size = static_cast<std::size_t>(a.m_Header->length) * sizeof(char16_t);
        return a.m_Header->length == b.m_Header->length && std::memcmp(a.m_Header + 1, b.m_Header + 1, size) == 0;
    }

private:
    Header* m_Header;
};

Text From(const Units& units) { return Text(units); }

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const TextCase& c : inputs.sizes) {
        AddCase(c.constructName + kLocked, name, c.texts, From);
        AddPreparedCase(c.copyName, name, c.texts, From, [](const Text& text) { return Text(text); });
    }
    AddPreparedCase(
        kEqual, name, inputs.thousands, [](const Units& units) { return std::pair(From(units), From(units)); },
        [](const std::pair<Text, Text>& texts) { return texts.first == texts.second; });
}

const AddSubject add{{kFloor, AddCases}};

}  // namespace
}  // namespace Bench::Strings
