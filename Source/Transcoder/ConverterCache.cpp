// The converters' way out of the cache and back.
#include "Source/Transcoder/ConverterCache.h"

#include <atomic>
#include <utility>

#include "Mac/TextEncodings.h"

namespace Lum {
namespace {

constinit std::atomic<bool> s_AreTornDown{false};

/// Numbers the threads in the order in which they come here.
unsigned ThreadNumber() noexcept {
    static constinit std::atomic<unsigned> next{0};
    thread_local constinit unsigned number = 0;
    if (number == 0) {
        number = next.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    return number;
}

/// Builds the caches with the library, ahead of most of the application's static objects and therefore
/// torn down behind them.
[[maybe_unused]] const ConverterCaches* const s_Early = ConverterCaches::Get();

}  // namespace

/// Keeps others out of a place; never waits for them.
class ConverterCache::Place::Visit {
public:
    explicit Visit(Place& place) noexcept
        : m_Flag(place.m_IsVisited), m_IsAlone(!m_Flag.test_and_set(std::memory_order_acquire)) {}
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit() {
        if (m_IsAlone) {
            m_Flag.clear(std::memory_order_release);
        }
    }
    explicit operator bool() const noexcept { return m_IsAlone; }

private:
    std::atomic_flag& m_Flag;
    const bool m_IsAlone;
};

void ConverterCache::Place::Exchange(Entry& entry) noexcept {
    if (const Visit visit(*this); visit) {
        std::swap(entry, m_Entry);
    }
}

ConverterCache::Entry ConverterCache::Place::TakeIfFor(unsigned long encoding) noexcept {
    const Visit visit(*this);
    return visit && !m_Entry.empty() && m_Entry.key() == encoding ? std::move(m_Entry) : Entry();
}

bool ConverterCache::Place::IsFor(unsigned long encoding) noexcept {
    const Visit visit(*this);
    return visit && !m_Entry.empty() && m_Entry.key() == encoding;
}

ConverterCache::~ConverterCache() {
    const ScopedLock lock(m_Lock);
    for (Place& place : m_Places) {
        Entry entry;
        place.Exchange(entry);
    }
    m_Map.clear();
}

ConverterCache::Place& ConverterCache::OwnPlace() noexcept { return m_Places[ThreadNumber() % m_Places.size()]; }

ConverterCache::Entry ConverterCache::Take(unsigned long encoding) noexcept {
    Entry entry;
    OwnPlace().Exchange(entry);
    if (!entry.empty() && entry.key() == encoding) {
        return entry;
    }
    const ScopedLock lock(m_Lock);
    if (!entry.empty()) {
        m_Map.insert(std::move(entry));
    }
    if (const auto found = m_Map.find(encoding); found != m_Map.end()) {
        return m_Map.extract(found);
    }
    // No thread makes a converter while another one lies idle.
    for (Place& place : m_Places) {
        if (Entry idle = place.TakeIfFor(encoding); !idle.empty()) {
            return idle;
        }
    }
    return {};
}

void ConverterCache::Put(Entry entry) noexcept {
    OwnPlace().Exchange(entry);
    if (!entry.empty()) {
        const ScopedLock lock(m_Lock);
        m_Map.insert(std::move(entry));
    }
}

std::size_t ConverterCache::Count(unsigned long encoding) noexcept {
    const ScopedLock lock(m_Lock);
    std::size_t count = m_Map.count(encoding);
    for (Place& place : m_Places) {
        count += place.IsFor(encoding) ? 1 : 0;
    }
    return count;
}

ConverterCache::Entry ConverterCache::MakeEntry(unsigned long encoding, Mac::TextConverter converter) {
    Map map;
    return map.extract(map.emplace(encoding, std::move(converter)));
}

ConverterCaches::~ConverterCaches() { s_AreTornDown = true; }

ConverterCaches* ConverterCaches::Get() noexcept {
    static ConverterCaches caches;
    return s_AreTornDown.load(std::memory_order_acquire) ? nullptr : &caches;
}

CachedConverter CachedConverter::ToUTF16(std::uint32_t from) {
    ConverterCaches* const caches = ConverterCaches::Get();
    return {caches == nullptr ? nullptr : &caches->toUTF16Converters, from, from, Mac::UTF16Encoding()};
}

CachedConverter CachedConverter::FromUTF16(std::uint32_t to) {
    ConverterCaches* const caches = ConverterCaches::Get();
    return {caches == nullptr ? nullptr : &caches->fromUTF16Converters, to, Mac::UTF16Encoding(), to};
}

CachedConverter::CachedConverter(ConverterCache* cache, std::uint32_t key, std::uint32_t from, std::uint32_t to)
    : m_Cache(cache) {
    if (cache != nullptr) {
        m_Entry = cache->Take(key);
    }
    if (m_Entry.empty()) {
        if (Mac::TextConverter converter(from, to); converter) {
            m_Entry = ConverterCache::MakeEntry(key, std::move(converter));
        }
    }
}

CachedConverter::~CachedConverter() {
    if (!m_Entry.empty()) {
        Converter().Clear();
        if (m_Cache != nullptr) {
            m_Cache->Put(std::move(m_Entry));
        }
    }
}

}  // namespace Lum
