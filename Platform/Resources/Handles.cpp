// Every handle points to a slot. Slots are in pages of their own, and a pointer is a handle only if its page
// is one of these.
#include "Platform/Resources/Handles.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <unordered_set>

using namespace Lum::Internal;

namespace {

using Resources::HandleOwner;

/// What a handle points to. The caller sees the first member.
struct Slot {
    char* block = nullptr;
    union {
        std::size_t size = 0;
        Slot* nextFree;  // of a slot that is not in use
    };
    HandleOwner owner = HandleOwner::kNobody;
    bool isLocked = false;
};

constexpr std::size_t kPageSize = 4096;
constexpr std::size_t kSlotsPerPage = kPageSize / sizeof(Slot);
/// The block of every handle whose size is 0.
char s_emptyBlock = 0;

struct Pool {
    std::unordered_set<std::uintptr_t> pages;
    Slot* free = nullptr;
};

/// Never destroyed, because static destructors use handles too. Made without an allocation, because questions
/// about a handle must not fail.
Pool& ThePool() noexcept {
    static_assert(std::is_nothrow_default_constructible_v<std::unordered_set<std::uintptr_t>>);
    alignas(Pool) static std::byte storage[sizeof(Pool)];
    static auto* const pool = new (storage) Pool;
    return *pool;
}

Slot* SlotOf(Handle handle) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(handle);
    const std::uintptr_t offset = address % kPageSize;
    if (offset % sizeof(Slot) != 0 || offset / sizeof(Slot) >= kSlotsPerPage ||
        !ThePool().pages.contains(address - offset)) {
        return nullptr;
    }
    auto* const slot = reinterpret_cast<Slot*>(handle);
    return slot->owner == HandleOwner::kNobody ? nullptr : slot;
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
    for (std::size_t i = kSlotsPerPage; i-- > 0;) {
        auto* const slot = new (static_cast<Slot*>(memory) + i) Slot;
        slot->nextFree = pool.free;
        pool.free = slot;
    }
    return true;
}

void FreeBlock(Slot& slot) noexcept {
    if (slot.block != &s_emptyBlock) {
        std::free(slot.block);
    }
}

/// The largest size of these services. A sanitizer would report a request for more as a fault.
constexpr std::size_t kMostBytes = 0x7FFFFFFF;

/// Sets added bytes to zero. False, with nothing changed, if there is no memory.
bool Resize(Slot& slot, std::size_t size) noexcept {
    if (size > kMostBytes) {
        return false;
    }
    char* block = &s_emptyBlock;
    if (size == 0) {
        FreeBlock(slot);
    } else {
        const bool isNew = slot.block == &s_emptyBlock;
        block = static_cast<char*>(isNew ? std::calloc(size, 1) : std::realloc(slot.block, size));
        if (block == nullptr) {
            return false;
        }
        if (!isNew && size > slot.size) {
            std::memset(block + slot.size, 0, size - slot.size);
        }
    }
    slot.block = block;
    slot.size = size;
    return true;
}

}  // namespace

Handle NewHandle(Size size) {
    Pool& pool = ThePool();
    if (size < 0 || (pool.free == nullptr && !AddPage(pool))) {
        return nullptr;
    }
    Slot& slot = *pool.free;
    Slot made;
    made.block = &s_emptyBlock;
    if (!Resize(made, static_cast<std::size_t>(size))) {
        return nullptr;
    }
    pool.free = slot.nextFree;
    made.owner = HandleOwner::kCaller;
    slot = made;
    return &slot.block;
}

void DisposeHandle(Handle handle) {
    if (Resources::OwnerOf(handle) == HandleOwner::kCaller) {
        Resources::SetOwner(handle, HandleOwner::kNobody);
    }
}

Size GetHandleSize(Handle handle) {
    const Slot* const slot = SlotOf(handle);
    return slot == nullptr ? 0 : static_cast<Size>(slot->size);
}

void SetHandleSize(Handle handle, Size size) {
    Slot* const slot = SlotOf(handle);
    if (slot == nullptr || slot->owner == HandleOwner::kRetired || size < 0) {
        return;
    }
    const auto bytes = static_cast<std::size_t>(size);
    if (!slot->isLocked) {
        Resize(*slot, bytes);
    } else if (bytes < slot->size) {
        slot->size = bytes;
    }
}

void HLock(Handle handle) {
    if (Slot* const slot = SlotOf(handle)) {
        slot->isLocked = true;
    }
}

void HUnlock(Handle handle) {
    if (Slot* const slot = SlotOf(handle)) {
        slot->isLocked = false;
    }
}

namespace Lum::Internal::Resources {

HandleOwner OwnerOf(Handle handle) noexcept {
    const Slot* const slot = SlotOf(handle);
    return slot == nullptr ? HandleOwner::kNobody : slot->owner;
}

void SetOwner(Handle handle, HandleOwner owner) noexcept {
    Slot* const slot = SlotOf(handle);
    if (slot == nullptr) {
        return;
    }
    slot->owner = owner;
    if (owner == HandleOwner::kCaller || owner == HandleOwner::kFile) {
        return;
    }
    FreeBlock(*slot);
    slot->block = nullptr;
    slot->size = 0;
    if (owner == HandleOwner::kNobody) {
        Pool& pool = ThePool();
        slot->nextFree = pool.free;
        pool.free = slot;
    }
}

}  // namespace Lum::Internal::Resources
