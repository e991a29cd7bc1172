// How far a conversion has come: the rest of the input and the rest of the room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Platform/TextEncoding/Converter.h"

namespace TextConversion {

constexpr bool IsLeadSurrogate(std::uint32_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsTrailSurrogate(std::uint32_t unit) noexcept { return (unit & 0xFC00) == 0xDC00; }

constexpr std::uint32_t FromSurrogates(std::uint32_t lead, std::uint32_t trail) noexcept {
    return 0x10000 + ((lead & 0x3FF) << 10 | (trail & 0x3FF));
}

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

/// What is wrong with the UTF-16 element at `from`, before `end`: noErr for a whole character.
inline OSStatus Utf16Fault(const unsigned char* from, const unsigned char* end) noexcept {
    if (end - from < 2) {
        return kTECPartialCharErr;
    }
    const std::uint32_t unit = LoadUnit(from);
    if ((unit & 0xF800) != 0xD800) {
        return noErr;
    }
    if (IsTrailSurrogate(unit)) {
        return kTextMalformedInputErr;
    }
    if (end - from < 4) {
        return kTECPartialCharErr;
    }
    return IsTrailSurrogate(LoadUnit(from + 2)) ? noErr : kTextMalformedInputErr;
}

struct Cursor {
    const unsigned char* from;
    const unsigned char* fromEnd;
    unsigned char* to;
    unsigned char* toEnd;

    Cursor(Input input, Output output) noexcept
        : from(input.data()), fromEnd(from + input.size()), to(output.data()), toEnd(to + output.size()) {}

    [[nodiscard]] std::size_t Left() const noexcept { return static_cast<std::size_t>(fromEnd - from); }
    [[nodiscard]] std::size_t Room() const noexcept { return static_cast<std::size_t>(toEnd - to); }
    void Advance(std::size_t read, std::size_t written) noexcept {
        from += read;
        to += written;
    }
    [[nodiscard]] Progress Stop(OSStatus status, Input input, Output output) const noexcept {
        return {status, static_cast<std::size_t>(from - input.data()), static_cast<std::size_t>(to - output.data())};
    }
};

}  // namespace TextConversion
