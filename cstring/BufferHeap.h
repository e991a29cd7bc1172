// Every buffer is a heap block of its own, so that memory tools see what pools hide.
#pragma once

#include <new>

#include "cstring/BufferMemory.h"

namespace Lum {

inline bool IsBufferMemoryReady(int /*sizeClass*/) noexcept { return false; }

inline void* TakeBufferMemory(int sizeClass) { return ::operator new[](BytesFor(CapacityOfClass(sizeClass))); }

inline void GiveBufferMemory(int /*sizeClass*/, void* memory) noexcept { ::operator delete[](memory); }

}  // namespace Lum
