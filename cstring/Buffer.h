// A string's buffer: how one is made, what its length means for the units behind it, and its end.
#pragma once

#include <Lum/CString.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "Source/Base/CopyUnits.h"
#include "Source/Base/MemoryTools.h"
#include "cstring/BufferMemory.h"

namespace Lum {

inline unsigned short* UnitsOf(CStringData* data) noexcept { return reinterpret_cast<unsigned short*>(data + 1); }

inline bool IsEmptyBuffer(const CStringData* data) noexcept { return data == &_afxInitData.header; }

/// Makes a buffer of fresh memory with that capacity, which is no less than `length`; the units are unset.
inline CStringData* PlaceBuffer(void* memory, int length, int capacity) noexcept {
    // Nearly every buffer is kept for good, by design. The one place that says so to leak checkers.
    IgnoreLeak(memory);
    auto* const data = new (memory) CStringData{nullptr, 1, length, capacity};
    UnitsOf(data)[capacity] = 0;
    UnitsOf(data)[length] = 0;
    return data;
}

/// A buffer with a copy of a short text, or null where the text is not short or memory would have to be
/// made first. Calls nothing: most strings are made here, and one of ten units in the time of a few calls.
inline CStringData* NewShortCopy(const unsigned short* units, int length) noexcept {
    if (units == nullptr || length <= 0 || length > CapacityOfClass(1)) {
        return nullptr;
    }
    const int sizeClass = length <= CapacityOfClass(0) ? 0 : 1;
    if (!IsBufferMemoryReady(sizeClass)) {
        return nullptr;
    }
    CStringData* const data = PlaceBuffer(TakeBufferMemory(sizeClass), length, CapacityOfClass(sizeClass));
    CopyShortUnits(UnitsOf(data), units, static_cast<std::size_t>(length));
    return data;
}

/// A buffer with a copy of a short piece of a text, or null where NewShortCopy has to do. Units behind the
/// piece are copied along, so that no branch depends on its length: those of tokens cannot be foreseen.
inline CStringData* NewPiece(CStringData* text, std::size_t first, std::size_t count) noexcept {
    constexpr std::size_t most = CapacityOfClass(0);
    const std::size_t copied = count <= most / 2 ? most / 2 : most;
    if (count == 0 || count > most || first + copied > static_cast<std::size_t>(text->allocLength) ||
        !IsBufferMemoryReady(0)) {
        return nullptr;
    }
    auto* const data = static_cast<CStringData*>(TakeBufferMemory(0));
    const unsigned short* const from = UnitsOf(text) + first;
    std::memcpy(UnitsOf(data), from, most / 2 * sizeof *from);
    if (copied == most) {
        std::memcpy(UnitsOf(data) + most / 2, from + most / 2, most / 2 * sizeof *from);
    }
    return PlaceBuffer(data, static_cast<int>(count), most);
}

/// A buffer with room for `length` units, which is above 0: count 1, that length, the 0 behind it; the
/// units are unset.
CStringData* NewBuffer(int length);

/// The room that NewBuffer gives for a length; 0 for 0.
int CapacityFor(int length) noexcept;

/// Gives back the host's string that the buffer keeps.
void ForgetHostString(CStringData* data) noexcept;

inline void CopyUnits(unsigned short* to, const unsigned short* from, std::size_t count) noexcept {
    if (count != 0) {
        std::memcpy(to, from, count * sizeof *to);
    }
}

inline void MoveUnits(unsigned short* to, const unsigned short* from, std::size_t count) noexcept {
    if (count != 0) {
        std::memmove(to, from, count * sizeof *to);
    }
}

/// The sum of two lengths that are not negative.
inline int AddLengths(long long a, long long b) {
    const long long sum = a + b;
    if (sum > std::numeric_limits<int>::max()) {
        throw std::bad_alloc();
    }
    return static_cast<int>(sum);
}

inline int AsLength(std::size_t units) {
    if (units > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::bad_alloc();
    }
    return static_cast<int>(units);
}

// The units between the text and the end of the room are of no account, until somebody is let in to
// write there or the length is set past the text: then they must be 0 or the caller's own, never what
// an older text left. A buffer whose spare units have been cleared for a caller is `open`, which the
// last unit tells, as long as the text leaves it free. The end of the caller's access closes it, and so
// does whatever shortens the text.

inline constexpr unsigned short kOpen = 0xFFFF;

inline bool IsOpen(CStringData* data) noexcept {
    return data->dataLength < data->allocLength && UnitsOf(data)[data->allocLength] == kOpen;
}

/// Clears the spare units unless that has been done; the text leaves room.
inline void Open(CStringData* data) noexcept {
    if (!IsOpen(data)) {
        unsigned short* const units = UnitsOf(data);
        std::fill(units + data->dataLength, units + data->allocLength, static_cast<unsigned short>(0));
        units[data->allocLength] = kOpen;
    }
}

/// Sets a length not above the present one, or one up to which the units have just been written. Never
/// writes to the empty buffer, which strings of several threads may look at.
inline void SetLength(CStringData* data, int length) noexcept {
    if (!IsEmptyBuffer(data)) {
        unsigned short* const units = UnitsOf(data);
        data->dataLength = length;
        units[data->allocLength] = 0;
        units[length] = 0;
    }
}

/// Sets a length above the present one; an open buffer stays open.
inline void GrowLength(CStringData* data, int length) noexcept {
    data->dataLength = length;
    UnitsOf(data)[length] = 0;
}

}  // namespace Lum
