// What the text conversions (%s, %c and their variants) stand for, and the null pointer of %p. Narrow texts are
// in the application's encoding.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Platform/Uc16/FormatArguments.h"
#include "Platform/Uc16/FormatConversion.h"
#include "Source/Base/UnitText.h"

namespace Lum::Internal::Uc16 {

constexpr std::size_t kNoLimit = SIZE_MAX;

/// Converts a NUL-terminated text up to `limit` units, whole characters only, and returns how many those
/// are; `units` may be null, to count them. The text ends before what is malformed. Bytes that make up
/// `limit` units need no NUL behind them.
std::size_t NarrowToUnits(const char* text, std::size_t limit, unsigned short* units);

/// One text of known length. It is not copied: the argument has to outlive this object.
class FieldText {
public:
    /// From a unit, string, or pointer conversion. Reads no more of a text than its precision allows.
    FieldText(const Conversion& conversion, const Argument& argument);
    FieldText(const FieldText&) = delete;
    FieldText& operator=(const FieldText&) = delete;
    ~FieldText() = default;

    /// The length in units.
    [[nodiscard]] std::size_t Size() const { return m_Size; }
    /// Writes the first `count` units, or of narrow text as many as make whole characters, and returns how many.
    std::size_t Write(unsigned short* to, std::size_t count) const;

private:
    void SetAscii(std::string_view text);
    void SetUnit(const Conversion& conversion, std::int64_t character);
    void SetString(const Conversion& conversion, const void* text);

    // One of the first two is set.
    const AnyUnit* m_Units = nullptr;
    const char* m_Narrow = nullptr;
    std::size_t m_Size = 0;
    std::array<unsigned short, 6> m_Own;  // for a text that is not in the caller's memory
};

}  // namespace Lum::Internal::Uc16
