// What the text conversions (%s, %c and their kin) stand for, and the null pointer of %p.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "Platform/Uc16/FormatArguments.h"
#include "Platform/Uc16/FormatConversion.h"
#include "Platform/Uc16/UnitRunPlain.h"

namespace Uc16 {

/// One text of known length. It is read where it is: the argument, or this object, lives as long.
class FieldText {
public:
    /// From a unit, string, or pointer conversion. Reads no more of a text than its precision allows.
    FieldText(const Conversion& conversion, const Argument& argument);
    FieldText(const FieldText&) = delete;
    FieldText& operator=(const FieldText&) = delete;
    ~FieldText() = default;

    /// The length in units.
    [[nodiscard]] std::size_t Size() const { return m_Size; }
    /// Writes the first `count` units, or what of them is made of whole characters, and returns how many.
    std::size_t Write(unsigned short* to, std::size_t count) const;

private:
    void SetAscii(std::string_view text);
    void SetUnit(const Conversion& conversion, std::int64_t character);
    void SetString(const Conversion& conversion, const void* text);

    // One of the first two is set.
    const AnyUnit* m_Units = nullptr;
    const char* m_Narrow = nullptr;
    std::size_t m_Size = 0;
    std::array<unsigned short, 6> m_Own;  // what is not in the caller's memory
};

}  // namespace Uc16
