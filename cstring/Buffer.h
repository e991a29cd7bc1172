// A string's buffer: how it is made, what its length means for the units behind it, and how it is freed.
// Where its memory comes from is BufferMemory.h's.
#pragma once

#include <Lum/CString.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "Source/Base/MemoryTools.h"
#include "Source/Base/ShortCopies.h"
#include "cstring/BufferMemory.h"

namespace Lum::Internal {

inline unsigned short* UnitsOf(CStringData* data) noexcept { return reinterpret_cast<unsigned short*>(data + 1); }

inline bool IsEmptyBuffer(const CStringData* data) noexcept { return data == &_afxInitData.header; }

/// Makes a buffer of fresh memory with that capacity, which is no less than `length`. Of the units, it writes
/// only the 0 behind that length and the one at the end.
inline CStringData* InitBuffer(void* memory, int length, int capacity) noexcept {
    // The pools keep nearly every buffer for the life of the process.
    IgnoreLeak(memory);
    auto* const data = new (memory) CStringData{nullptr, 1, length, capacity};
    UnitsOf(data)[capacity] = 0;
    UnitsOf(data)[length] = 0;
    return data;
}

/// A buffer with a copy of a short text, or null where the text is not short or the pool is empty. Makes no
/// call: most strings are made here, and a call would cost as much as copying the text.
inline CStringData* NewShortCopy(const unsigned short* units, int length) noexcept {
    if (units == nullptr || length <= 0 || length > CapacityOfClass(1)) {
        return nullptr;
    }
    const int sizeClass = length <= CapacityOfClass(0) ? 0 : 1;
    if (!IsBufferMemoryReady(sizeClass)) {
        return nullptr;
    }
    CStringData* const data = InitBuffer(TakeBufferMemory(sizeClass), length, CapacityOfClass(sizeClass));
    CopyShortUnits(UnitsOf(data), units, static_cast<std::size_t>(length));
    return data;
}

/// A buffer with a copy of a short piece of a text, or null where the caller has to make it another way. Units
/// behind the piece are copied along, so that no branch depends on its length, which cannot be predicted for
/// tokens.
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
    return InitBuffer(data, static_cast<int>(count), most);
}

/// A buffer with a capacity of at least `length` units, which is above 0: reference count 1, that length, the
/// 0 behind it. The caller writes all the units, or ends with SetFirstLength or ClearBehindText.
CStringData* NewBuffer(int length);

/// The capacity that NewBuffer provides for a length; 0 for 0.
int CapacityFor(int length) noexcept;

/// Releases the host's string that the buffer caches, if there is one.
void DropHostString(CStringData* data) noexcept;

/// The one thing that buffers need of the host's services, which only HostStrings.cpp calls.
void ReleaseHostString(CFStringRef string) noexcept;

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

// The units behind the text belong to the caller to whom the buffer was handed for writing. Only what writes a
// text changes them, and no state is kept in them. All units up to the capacity are initialised when the buffer
// is made, so that a caller who sets too great a length sees zeros or an older text of this process, never
// uninitialised memory. Blocks of the pools are cleared when they are new; a longer buffer is filled when it is
// made, or cleared behind its text.

/// Clears everything behind the text.
inline void ClearBehindText(CStringData* data) noexcept {
    std::fill(UnitsOf(data) + data->dataLength, UnitsOf(data) + data->allocLength + 1, static_cast<unsigned short>(0));
}

/// Sets the length of a text that has just been written to a buffer from NewBuffer, which may be longer.
inline void SetFirstLength(CStringData* data, int length) noexcept {
    data->dataLength = length;
    UnitsOf(data)[length] = 0;
    if (data->allocLength > CapacityOfClass(kSizeClasses - 1)) {
        ClearBehindText(data);
    }
}

/// Sets the length and the 0 behind it. Never writes to the empty buffer, which strings of several threads
/// share.
inline void SetLength(CStringData* data, int length) noexcept {
    if (!IsEmptyBuffer(data)) {
        data->dataLength = length;
        UnitsOf(data)[length] = 0;
    }
}

}  // namespace Lum::Internal
