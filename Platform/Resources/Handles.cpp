// Places for handles come in pages of their own; a pointer is a handle if its page is one of these.
#include "Platform/Resources/Handles.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <unordered_set>

namespace {

using Resources::HandleOwner;

/// What a handle points to. Its first member is what the caller sees.
struct Place {
    char* block = nullptr;
    union {
        std::size_t size = 0;
        Place* nextFree;  // of a place that nobody owns
    };
    HandleOwner owner = HandleOwner::kNobody;
    bool isLocked = false;
};

constexpr std::size_t kPageSize = 4096;
constexpr std::size_t kPlacesPerPage = kPageSize / sizeof(Place);
/// The block of every handle of no bytes.
char emptyBlock = 0;

struct Pool {
    std::unordered_set<std::uintptr_t> pages;
    Place* free = nullptr;
};

/// Never destroyed, for handles are used by static destructors too.
Pool& ThePool() {
    static auto* const pool = new Pool;
    return *pool;
}

Place* PlaceOf(Handle handle) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(handle);
    const std::uintptr_t offset = address % kPageSize;
    if (offset % sizeof(Place) != 0 || offset / sizeof(Place) >= kPlacesPerPage ||
        !ThePool().pages.contains(address - offset)) {
        return nullptr;
    }
    auto* const place = reinterpret_cast<Place*>(handle);
    return place->owner == HandleOwner::kNobody ? nullptr : place;
}

/// False, with nothing changed, if there is no memory for another page.
bool AddPage(Pool& pool) noexcept {
    void* const memory = std::aligned_alloc(kPageSize, kPageSize);
    if (memory == nullptr) {
        return false;
    }
    try {
        pool.pages.insert(reinterpret_cast<std::uintptr_t>(memory));
    } catch (const std::bad_alloc&) {
        std::free(memory);
        return false;
    }
    for (std::size_t i = kPlacesPerPage; i-- > 0;) {
        auto* const place = new (static_cast<Place*>(memory) + i) Place;
        place->nextFree = pool.free;
        pool.free = place;
    }
    return true;
}

void FreeBlock(Place& place) noexcept {
    if (place.block != &emptyBlock) {
        std::free(place.block);
    }
}

/// What no size of these services exceeds; asking the heap for more would only be reported as a fault.
constexpr std::size_t kMostBytes = 0x7FFFFFFF;

/// Zeros what is added. False, with nothing changed, if there is no memory.
bool Resize(Place& place, std::size_t size) noexcept {
    if (size > kMostBytes) {
        return false;
    }
    char* block = &emptyBlock;
    if (size == 0) {
        FreeBlock(place);
    } else {
        const bool isNew = place.block == &emptyBlock;
        block = static_cast<char*>(isNew ? std::calloc(size, 1) : std::realloc(place.block, size));
        if (block == nullptr) {
            return false;
        }
        if (!isNew && size > place.size) {
            std::memset(block + place.size, 0, size - place.size);
        }
    }
    place.block = block;
    place.size = size;
    return true;
}

}  // namespace

Handle NewHandle(Size size) {
    Pool& pool = ThePool();
    if (size < 0 || (pool.free == nullptr && !AddPage(pool))) {
        return nullptr;
    }
    Place& place = *pool.free;
    Place made;
    made.block = &emptyBlock;
    if (!Resize(made, static_cast<std::size_t>(size))) {
        return nullptr;
    }
    pool.free = place.nextFree;
    made.owner = HandleOwner::kCaller;
    place = made;
    return &place.block;
}

void DisposeHandle(Handle handle) {
    if (Resources::OwnerOf(handle) == HandleOwner::kCaller) {
        Resources::SetOwner(handle, HandleOwner::kNobody);
    }
}

Size GetHandleSize(Handle handle) {
    const Place* const place = PlaceOf(handle);
    return place == nullptr ? 0 : static_cast<Size>(place->size);
}

void SetHandleSize(Handle handle, Size size) {
    Place* const place = PlaceOf(handle);
    if (place == nullptr || place->owner == HandleOwner::kRetired || size < 0) {
        return;
    }
    const auto bytes = static_cast<std::size_t>(size);
    if (!place->isLocked) {
        Resize(*place, bytes);
    } else if (bytes < place->size) {
        place->size = bytes;
    }
}

void HLock(Handle handle) {
    if (Place* const place = PlaceOf(handle)) {
        place->isLocked = true;
    }
}

void HUnlock(Handle handle) {
    if (Place* const place = PlaceOf(handle)) {
        place->isLocked = false;
    }
}

namespace Resources {

HandleOwner OwnerOf(Handle handle) noexcept {
    const Place* const place = PlaceOf(handle);
    return place == nullptr ? HandleOwner::kNobody : place->owner;
}

void SetOwner(Handle handle, HandleOwner owner) noexcept {
    Place* const place = PlaceOf(handle);
    if (place == nullptr) {
        return;
    }
    place->owner = owner;
    if (owner == HandleOwner::kCaller || owner == HandleOwner::kFile) {
        return;
    }
    FreeBlock(*place);
    place->block = nullptr;
    place->size = 0;
    if (owner == HandleOwner::kNobody) {
        Pool& pool = ThePool();
        place->nextFree = pool.free;
        pool.free = place;
    }
}

}  // namespace Resources
