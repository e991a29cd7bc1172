// Keeps the host's converters for further use, since making one costs more than a short conversion.
//
// A converter is out of the cache while a thread uses it; whoever asks for the same encoding meanwhile
// gets one of his own. Entries travel as nodes of the map, so that nothing is allocated once a
// converter exists.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>

#include <Lum/Mutex.h>

#include "Mac/TextConverter.h"

namespace Lum {

class ConverterCache {
public:
    /// By encoding, any number of converters for each.
    using Map = std::multimap<unsigned long, Mac::TextConverter>;
    using Entry = Map::node_type;

    /// `lock` guards the map; it must outlive the cache.
    explicit ConverterCache(Mutex& lock) noexcept : m_Lock(lock) {}
    ConverterCache(const ConverterCache&) = delete;
    ConverterCache& operator=(const ConverterCache&) = delete;
    /// Disposes of every converter.
    ~ConverterCache();

    /// A converter for `encoding`, no longer in the cache; an empty entry if there is none.
    [[nodiscard]] Entry Take(unsigned long encoding) noexcept;
    /// Puts an entry in the cache, beside whatever is there.
    void Put(Entry entry) noexcept;
    /// How many converters for `encoding` are here.
    [[nodiscard]] std::size_t Count(unsigned long encoding) noexcept;

    /// An entry that has not been in a cache.
    [[nodiscard]] static Entry MakeEntry(unsigned long encoding, Mac::TextConverter converter);

private:
    /// Where threads leave the entry they used last. Two threads that convert short texts would pass
    /// the lock to and fro for longer than they convert; in a place of its own neither meets the
    /// other. On a line of the processor's cache of its own, for the same reason.
    class alignas(128) Place {
    public:
        /// Swaps `entry` with what is here; does nothing while another thread is at it.
        void Exchange(Entry& entry) noexcept;
        /// Hands out what is here if it is for `encoding`.
        [[nodiscard]] Entry TakeIfFor(unsigned long encoding) noexcept;
        [[nodiscard]] bool IsFor(unsigned long encoding) noexcept;

    private:
        class Visit;
        std::atomic_flag m_IsVisited;
        Entry m_Entry;
    };

    Place& OwnPlace() noexcept;

    Mutex& m_Lock;
    Map m_Map;
    std::array<Place, 16> m_Places;
};

/// The caches of the process, and the lock that guards all of them. Built when the library is loaded
/// or first used, whichever comes first; torn down in the reverse order.
struct ConverterCaches {
    Mutex converterMapLock;
    ConverterCache fromUTF16Converters{converterMapLock};
    ConverterCache toUTF16Converters{converterMapLock};
    ConverterCache fromUTF32Converters{converterMapLock};  ///< Stays empty.
    ~ConverterCaches();

    /// Null once they are torn down, for destructors that convert even later.
    static ConverterCaches* Get() noexcept;
};

/// A converter for the length of a conversion: out of the cache or new, and back to it, as good as new,
/// on whichever way the scope is left.
class CachedConverter {
public:
    /// From an encoding to UTF-16.
    static CachedConverter ToUTF16(std::uint32_t from);
    /// From UTF-16 to an encoding.
    static CachedConverter FromUTF16(std::uint32_t to);
    CachedConverter(const CachedConverter&) = delete;
    CachedConverter& operator=(const CachedConverter&) = delete;
    ~CachedConverter();

    /// Whether there is a converter: false for encodings that the host has none for.
    explicit operator bool() const noexcept { return !m_Entry.empty(); }
    [[nodiscard]] Mac::TextConverter& Converter() const noexcept { return m_Entry.mapped(); }

private:
    CachedConverter(ConverterCache* cache, std::uint32_t key, std::uint32_t from, std::uint32_t to);

    ConverterCache* m_Cache;  ///< Null once the caches are torn down.
    ConverterCache::Entry m_Entry;
};

}  // namespace Lum
