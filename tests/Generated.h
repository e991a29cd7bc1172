// Inputs made up by rule: every short text, random texts, and texts in blocks of their exact size.
// Tests that include this have from here what it includes of the standard library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <string_view>

#include "Source/Base/Cpu.h"

namespace Generated {

/// Calls `use` with every text of at most `longest` characters of `alphabet` that begins with `start`.
template <class Use>
void EveryText(std::string_view alphabet, std::size_t longest, const Use& use, const std::string& start = "") {
    use(start);
    for (std::size_t i = 0; start.size() < longest && i < alphabet.size(); ++i) {
        EveryText(alphabet, longest, use, start + alphabet[i]);
    }
}

/// A text of at most `longest` characters of `alphabet`.
template <class String>
String Text(std::mt19937& random, const String& alphabet, std::size_t longest) {
    String text(random() % (longest + 1), '\0');
    std::generate(text.begin(), text.end(), [&] { return alphabet[random() % alphabet.size()]; });
    return text;
}

/// Calls `use` once for each tier of vector instructions that this machine has, the plain one included.
template <class Use>
void OnEveryCpu(Use use) {
    using namespace Lum::Internal;
    const CpuTier best = UsedCpu();
    for (int tier = 0; tier <= static_cast<int>(best); ++tier) {
        use(ForceCpu(static_cast<CpuTier>(tier)));
    }
}

/// All 256 bytes.
inline std::string EveryByte() {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

/// A copy of a text in a heap block of its exact size, so that a sanitizer sees one unit too far.
template <class Unit>
class ExactBlock {
public:
    template <class Text>
    explicit ExactBlock(const Text& text) : m_Units(new Unit[text.size()]), m_Size(text.size()) {
        std::copy(text.begin(), text.end(), m_Units.get());
    }
    [[nodiscard]] Unit* begin() const { return m_Units.get(); }
    [[nodiscard]] Unit* end() const { return m_Units.get() + m_Size; }
    [[nodiscard]] std::size_t size() const { return m_Size; }
    [[nodiscard]] std::string_view View() const { return {m_Units.get(), m_Size}; }

private:
    std::unique_ptr<Unit[]> m_Units;
    std::size_t m_Size;
};
using Exact = ExactBlock<char>;
using ExactUnits = ExactBlock<unsigned short>;

}  // namespace Generated
