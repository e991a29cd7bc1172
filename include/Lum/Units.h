// 16-bit code units: the two types that hold them, and arguments that take either.
//
// A CString holds `unsigned short`; literals u"..." and std::u16string hold `char16_t`. The language
// has them as two types that must not be read through each other. AsUnits and AsChar16 are the only
// functions that convert between the two.
#pragma once

#include <concepts>
#include <cstddef>

namespace Lum {

static_assert(sizeof(unsigned short) == sizeof(char16_t));

/// The same units under the other type. Whatever was written through one type before the call can be
/// read through the other after it: the compiler may move no access to memory across the call.
inline unsigned short* AsUnits(char16_t* units) noexcept {
    asm volatile("" : "+r"(units) : : "memory");
    return reinterpret_cast<unsigned short*>(units);
}
inline const unsigned short* AsUnits(const char16_t* units) noexcept {
    asm volatile("" : "+r"(units) : : "memory");
    return reinterpret_cast<const unsigned short*>(units);
}
/// The same the other way.
inline char16_t* AsChar16(unsigned short* units) noexcept {
    asm volatile("" : "+r"(units) : : "memory");
    return reinterpret_cast<char16_t*>(units);
}
inline const char16_t* AsChar16(const unsigned short* units) noexcept {
    asm volatile("" : "+r"(units) : : "memory");
    return reinterpret_cast<const char16_t*>(units);
}

/// An argument that points to 16-bit units of either type, or is null. Whether they end with a 0 unit
/// or are counted is said by the operation that takes it.
class UnitPointer {
public:
    UnitPointer(std::nullptr_t) noexcept {}
    template <std::convertible_to<const unsigned short*> Units>
    UnitPointer(const Units& units) noexcept : m_Units(units) {}
    template <std::convertible_to<const char16_t*> Units>
    UnitPointer(const Units& units) noexcept : m_Units(AsUnits(static_cast<const char16_t*>(units))) {}

    /// The units, or null.
    operator const unsigned short*() const noexcept { return m_Units; }

private:
    const unsigned short* m_Units = nullptr;
};

/// An argument that is one code unit: any integer or character. A one-byte character counts as its
/// unsigned value, a wider number keeps its low 16 bits.
template <std::integral Value>
constexpr unsigned short AsUnit(Value value) noexcept {
    if constexpr (sizeof(Value) == 1) {
        return static_cast<unsigned char>(value);
    } else {
        return static_cast<unsigned short>(value);
    }
}

}  // namespace Lum
