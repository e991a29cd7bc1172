// The arguments of a format, in their order or by position.
#pragma once

#include <array>
#include <cstdarg>
#include <cstdint>

#include "Platform/Uc16/FormatConversion.h"

namespace Lum::Internal::Uc16 {

/// The member that the kind names is set; an int is in `integer` too, its sign extended. Filled by reference,
/// because copying the whole union right after writing a part of it stalls the processor.
union Argument {
    std::int64_t integer;
    double number;
    long double longNumber;
    const void* pointer;
};

/// Hands out the arguments of one call.
class Arguments {
public:
    /// Works on a copy: the caller's `args` is not advanced.
    explicit Arguments(va_list args) { va_copy(m_List, args); }
    ~Arguments() { va_end(m_List); }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    /// Takes the arguments of a conversion that has any, width and precision first, and stores these in it: the
    /// width positive, a negative precision as none. False, with nothing taken, if the conversion has positions
    /// where the first one had none, or the reverse, or reads a position as another kind than before. `rest` is
    /// the format from the conversion's percent sign on: the first position makes it read ahead.
    bool Take(Conversion& conversion, Argument& argument, const unsigned short* rest) {
        if (m_Order == Order::kByPosition || conversion.position != 0 || conversion.width.argument != 0 ||
            conversion.precision.argument != 0) {
            return TakeSeveral(conversion, argument, rest);
        }
        m_Order = Order::kAsPassed;
        Next(KindOf(conversion), argument);
        return true;
    }

private:
    enum class Order : std::uint8_t { kUndecided, kAsPassed, kByPosition };
    static constexpr int kMostPositions = 64;

    // NOLINTBEGIN(clang-analyzer-valist.Uninitialized): it does not see the constructor's va_copy.
    void Next(ArgumentKind kind, Argument& argument) {
        switch (kind) {
            case ArgumentKind::kInt64:
                argument.integer = va_arg(m_List, long long);
                break;
            case ArgumentKind::kDouble:
                argument.number = va_arg(m_List, double);
                break;
            case ArgumentKind::kLongDouble:
                argument.longNumber = va_arg(m_List, long double);
                break;
            case ArgumentKind::kPointer:
                argument.pointer = va_arg(m_List, const void*);
                break;
            default:
                argument.integer = va_arg(m_List, int);
                break;
        }
    }
    // NOLINTEND(clang-analyzer-valist.Uninitialized)
    bool TakeSeveral(Conversion& conversion, Argument& argument, const unsigned short* rest);
    [[nodiscard]] bool Has(int position, ArgumentKind kind) const;
    void NoteKind(int position, ArgumentKind kind);
    void ReadPositions(const unsigned short* rest);
    void TakeFrom(int position, ArgumentKind kind, Argument& argument);
    int TakeMeasure(const Measure& measure);

    va_list m_List;
    Order m_Order = Order::kUndecided;
    // Set when the first position is seen.
    std::array<ArgumentKind, kMostPositions> m_Kinds;
    std::array<Argument, kMostPositions> m_Values;
};

}  // namespace Lum::Internal::Uc16
