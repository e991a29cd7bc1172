// The positions of a conversion in its input and output, and how UTF-16 is read and written there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "Source/Base/UnitText.h"

namespace Lum::Internal::TextConversion {

using Input = std::span<const unsigned char>;
using Output = std::span<unsigned char>;

/// Why a conversion ends where it does.
enum class Ending : std::uint8_t {
    kDone,        ///< All input is read.
    kOutputFull,  ///< The next element does not fit the output.
    kMalformed,   ///< The next bytes are no text.
    kIncomplete,  ///< The input ends within an element.
    kUnmappable,  ///< The next character has no counterpart.
};

/// How far a conversion came, in bytes.
struct Progress {
    Ending ending;
    std::size_t read;
    std::size_t written;
};

/// Reads the unit at `from`, which need not be aligned.
inline std::uint32_t LoadUnit(const unsigned char* from) noexcept {
    std::uint16_t unit = 0;
    std::memcpy(&unit, from, sizeof unit);
    return unit;
}

inline void StoreUnit(unsigned char* to, std::uint32_t unit) noexcept {
    const auto narrow = static_cast<std::uint16_t>(unit);
    std::memcpy(to, &narrow, sizeof narrow);
}

/// Converts without keeping state between calls.
using ConvertFunction = Progress (*)(Input input, Output output) noexcept;

/// What is wrong with the UTF-16 element between `from` and `end`; kDone for a whole character.
inline Ending Utf16Fault(const unsigned char* from, const unsigned char* end) noexcept {
    if (end - from < 2) {
        return Ending::kIncomplete;
    }
    const std::uint32_t unit = LoadUnit(from);
    if (!IsSurrogate(unit)) {
        return Ending::kDone;
    }
    if (IsTrailSurrogate(unit)) {
        return Ending::kMalformed;
    }
    if (end - from < 4) {
        return Ending::kIncomplete;
    }
    return IsTrailSurrogate(LoadUnit(from + 2)) ? Ending::kDone : Ending::kMalformed;
}

struct Cursor {
    const unsigned char* from;
    const unsigned char* fromEnd;
    unsigned char* to;
    unsigned char* toEnd;

    Cursor(Input input, Output output) noexcept
        : from(input.data()), fromEnd(from + input.size()), to(output.data()), toEnd(to + output.size()) {}

    /// The bytes of input that are left, and of output.
    [[nodiscard]] std::size_t Left() const noexcept { return static_cast<std::size_t>(fromEnd - from); }
    [[nodiscard]] std::size_t Space() const noexcept { return static_cast<std::size_t>(toEnd - to); }
    void Advance(std::size_t read, std::size_t written) noexcept {
        from += read;
        to += written;
    }
    /// A conversion that ends here.
    [[nodiscard]] Progress Stop(Ending ending, Input input, Output output) const noexcept {
        return {ending, static_cast<std::size_t>(from - input.data()), static_cast<std::size_t>(to - output.data())};
    }
};

}  // namespace Lum::Internal::TextConversion
