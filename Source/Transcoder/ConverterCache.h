// Keeps the host's converters for later conversions, because to make one costs more than a short conversion.
//
// A converter is not in the cache while a thread uses it. If another thread needs the same encoding
// meanwhile, it makes a converter of its own. So there are at most as many converters for an encoding as
// there were threads that used it at the same time.
#pragma once

#include <array>
#include <atomic>
#include <memory>

#include <Lum/Mutex.h>
#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"

namespace Lum::Internal {

class ConverterCache {
public:
    struct Entry {
        TextEncoding encoding;
        Mac::TextConverter converter;
        std::unique_ptr<Entry> next = nullptr;  ///< used by the cache only
    };

    /// `lock` must outlive the cache.
    explicit ConverterCache(Mutex& lock) noexcept : m_Lock(lock) {}
    ConverterCache(const ConverterCache&) = delete;
    ConverterCache& operator=(const ConverterCache&) = delete;

    /// Removes a converter for `encoding` from the cache; null if none is there.
    [[nodiscard]] std::unique_ptr<Entry> Take(TextEncoding encoding) noexcept;
    void Put(std::unique_ptr<Entry> entry) noexcept;
    /// Disposes of every converter in the cache.
    void Clear() noexcept;

private:
    /// The converter that a thread used last. Two threads that convert short texts would wait for the lock
    /// longer than they convert; with a slot for each thread, neither of them needs the lock. Each slot is in
    /// a cache line of its own for the same reason.
    struct alignas(128) Slot {
        std::atomic<Entry*> entry{nullptr};

        [[nodiscard]] std::unique_ptr<Entry> Exchange(std::unique_ptr<Entry> other) noexcept {
            return std::unique_ptr<Entry>(entry.exchange(other.release(), std::memory_order_acq_rel));
        }
    };

    Slot& OwnSlot() noexcept;
    void AddToList(std::unique_ptr<Entry> entry) noexcept;
    std::unique_ptr<Entry> TakeFromList(TextEncoding encoding) noexcept;

    Mutex& m_Lock;
    std::unique_ptr<Entry> m_List;  ///< guarded by the lock; the latest first
    std::array<Slot, 16> m_Slots;
};

/// The caches of the process, and the lock that guards their lists. Made when the library is loaded or first
/// used, whichever comes first. Emptied when the library is unloaded, but never destroyed.
struct ConverterCaches {
    Mutex converterMapLock;
    ConverterCache fromUTF16Converters{converterMapLock};
    ConverterCache toUTF16Converters{converterMapLock};
    ConverterCache fromUTF32Converters{converterMapLock};  ///< Nothing is ever put here.

    /// Null after the library was unloaded: static destructors may convert even later.
    static ConverterCaches* Get() noexcept;
};

/// A converter for the duration of one conversion. It comes from the cache or is new. The destructor clears
/// it and puts it into the cache.
class CachedConverter {
public:
    /// From an encoding to UTF-16.
    static CachedConverter ToUTF16(TextEncoding from);
    /// From UTF-16 to an encoding.
    static CachedConverter FromUTF16(TextEncoding to);
    CachedConverter(const CachedConverter&) = delete;
    CachedConverter& operator=(const CachedConverter&) = delete;
    ~CachedConverter();

    /// Whether the host has a converter for the encoding.
    explicit operator bool() const noexcept { return m_Entry != nullptr; }
    [[nodiscard]] Mac::TextConverter& Converter() const noexcept { return m_Entry->converter; }

private:
    CachedConverter(ConverterCache* cache, TextEncoding key, TextEncoding from, TextEncoding to);

    ConverterCache* m_Cache;  ///< null after the library was unloaded
    std::unique_ptr<ConverterCache::Entry> m_Entry;
};

}  // namespace Lum::Internal
