// Makes and frees the buffers of strings. Those above the pools' sizes are heap blocks.
#include "cstring/Buffer.h"

#include "cstring/BufferMemory.h"
#include "cstring/HostString.h"

// The empty string is there before any static initialiser and after any static destructor.
constinit CStringEmptyBuffer _afxInitData = {{nullptr, -1, 0, 0}, 0};   // NOLINT
constinit CStringData* const _afxDataNil = &_afxInitData.header;        // NOLINT
constinit unsigned short* const _afxPchNil = &_afxInitData.terminator;  // NOLINT
constinit const unsigned short afxChNil = 0;
static_assert(offsetof(CStringEmptyBuffer, terminator) == sizeof(CStringData));

namespace Lum {
namespace {

void* TakeHeapBlock(int capacity) {
    constexpr auto most = static_cast<unsigned long long>(std::numeric_limits<std::ptrdiff_t>::max());
    if (static_cast<unsigned long long>(capacity) > (most - BytesFor(0)) / sizeof(unsigned short)) {
        throw std::bad_alloc();
    }
    return ::operator new[](BytesFor(capacity));
}

}  // namespace

CStringData* NewBuffer(int length) {
    const int sizeClass = SizeClassOf(length);
    const bool isPooled = sizeClass < kSizeClasses;
    const int capacity = isPooled ? CapacityOfClass(sizeClass) : length;
    void* const memory = isPooled ? TakeBufferMemory(sizeClass) : TakeHeapBlock(capacity);
    // Nearly every buffer is kept for good, by design. The one place that says so to leak checkers.
    IgnoreLeak(memory);
    auto* const data = new (memory) CStringData{nullptr, 1, length, capacity};
    UnitsOf(data)[capacity] = 0;
    UnitsOf(data)[length] = 0;
    return data;
}

int CapacityFor(int length) noexcept {
    if (length == 0) {
        return 0;
    }
    const int sizeClass = SizeClassOf(length);
    return sizeClass < kSizeClasses ? CapacityOfClass(sizeClass) : length;
}

void ForgetHostString(CStringData* data) noexcept {
    if (data->cachedCFString != nullptr) {
        ReleaseHostString(data->cachedCFString);
        data->cachedCFString = nullptr;
    }
}

}  // namespace Lum

void CString::FreeData(CStringData* data) noexcept {
    Lum::ForgetHostString(data);
    const int sizeClass = Lum::SizeClassOf(data->allocLength);
    if (sizeClass < Lum::kSizeClasses) {
        Lum::GiveBufferMemory(sizeClass, data);
    } else {
        ::operator delete[](static_cast<void*>(data));
    }
}
