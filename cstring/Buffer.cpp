// Makes and frees the buffers of strings. Those above the pools' sizes are heap blocks.
#include "cstring/Buffer.h"

using namespace Lum::Internal;

// The empty string is there before any static initialiser and after any static destructor.
constinit CStringEmptyBuffer _afxInitData = {{nullptr, -1, 0, 0}, 0};   // NOLINT
constinit CStringData* const _afxDataNil = &_afxInitData.header;        // NOLINT
constinit unsigned short* const _afxPchNil = &_afxInitData.terminator;  // NOLINT
constinit const unsigned short afxChNil = 0;
static_assert(offsetof(CStringEmptyBuffer, terminator) == sizeof(CStringData));

namespace Lum::Internal {

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
    return InitBuffer(isPooled ? TakeBufferMemory(sizeClass) : TakeHeapBlock(capacity), length, capacity);
}

int CapacityFor(int length) noexcept {
    if (length == 0) {
        return 0;
    }
    const int sizeClass = SizeClassOf(length);
    return sizeClass < kSizeClasses ? CapacityOfClass(sizeClass) : length;
}

void DropHostString(CStringData* data) noexcept {
    if (data->cachedCFString != nullptr) {
        ReleaseHostString(data->cachedCFString);
        data->cachedCFString = nullptr;
    }
}

}  // namespace Lum::Internal

namespace {

/// Apart, so that FreeData needs no stack for it.
[[gnu::noinline]] void FreeWithHostString(CStringData* data) noexcept {
    if (!IsEmptyBuffer(data)) {
        DropHostString(data);
        CString::FreeData(data);
    }
}

}  // namespace

void CString::FreeData(CStringData* data) noexcept {
    if (data->cachedCFString != nullptr) {
        FreeWithHostString(data);
        return;
    }
    const int sizeClass = SizeClassOf(data->allocLength);
    if (sizeClass < kSizeClasses) {
        FreeBufferMemory(sizeClass, data);
    } else if (!IsEmptyBuffer(data)) {
        ::operator delete[](static_cast<void*>(data));
    }
}
