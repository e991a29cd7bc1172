// How converters leave the cache and come back to it.
#include "Source/Transcoder/ConverterCache.h"

#include <cstddef>
#include <new>
#include <utility>

#include "Mac/TextEncodings.h"

namespace Lum::Internal {

namespace {

constinit std::atomic<bool> s_AreTornDown{false};

/// A number for the calling thread: 1 for the first one that calls, then 2, and so on.
unsigned ThreadNumber() noexcept {
    static constinit std::atomic<unsigned> next{0};
    thread_local constinit unsigned number = 0;
    if (number == 0) {
        number = next.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    return number;
}

/// Makes the caches when the library is loaded. That is before most static objects of the application are
/// made, so the converters are disposed of after those objects are destroyed.
struct Lifetime {
    Lifetime() noexcept { ConverterCaches::Get(); }
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() {
        ConverterCaches* const caches = ConverterCaches::Get();
        s_AreTornDown = true;
        caches->fromUTF16Converters.Clear();
        caches->toUTF16Converters.Clear();
        caches->fromUTF32Converters.Clear();
    }
} const s_Lifetime;

}  // namespace

ConverterCache::Slot& ConverterCache::OwnSlot() noexcept { return m_Slots[ThreadNumber() % m_Slots.size()]; }

void ConverterCache::AddToList(std::unique_ptr<Entry> entry) noexcept {
    entry->next = std::move(m_List);
    m_List = std::move(entry);
}

std::unique_ptr<ConverterCache::Entry> ConverterCache::TakeFromList(TextEncoding encoding) noexcept {
    std::unique_ptr<Entry>* link = &m_List;
    while (*link && (*link)->encoding != encoding) {
        link = &(*link)->next;
    }
    std::unique_ptr<Entry> found = std::move(*link);
    if (found) {
        *link = std::move(found->next);
    }
    return found;
}

std::unique_ptr<ConverterCache::Entry> ConverterCache::Take(TextEncoding encoding) noexcept {
    std::unique_ptr<Entry> entry = OwnSlot().Exchange(nullptr);
    if (entry && entry->encoding == encoding) {
        return entry;
    }
    const ScopedLock lock(m_Lock);
    if (entry) {
        AddToList(std::move(entry));
    }
    if ((entry = TakeFromList(encoding))) {
        return entry;
    }
    // The converter may be idle in the slot of another thread. To look at an entry, take it out of the slot.
    for (Slot& slot : m_Slots) {
        entry = slot.Exchange(nullptr);
        if (entry && entry->encoding == encoding) {
            return entry;
        }
        if (entry && (entry = slot.Exchange(std::move(entry)))) {
            AddToList(std::move(entry));  // Its thread has put another one there in the meantime.
        }
    }
    return nullptr;
}

void ConverterCache::Put(std::unique_ptr<Entry> entry) noexcept {
    if ((entry = OwnSlot().Exchange(std::move(entry)))) {
        const ScopedLock lock(m_Lock);
        AddToList(std::move(entry));
    }
}

void ConverterCache::Clear() noexcept {
    const ScopedLock lock(m_Lock);
    for (Slot& slot : m_Slots) {
        static_cast<void>(slot.Exchange(nullptr));
    }
    // One at a time: a long list would destroy itself recursively.
    while (m_List) {
        m_List = std::move(m_List->next);
    }
}

ConverterCaches* ConverterCaches::Get() noexcept {
    // In static storage, without a destructor: static destructors and other threads may still call this.
    alignas(ConverterCaches) static std::byte storage[sizeof(ConverterCaches)];
    static auto* const caches = new (storage) ConverterCaches;
    return s_AreTornDown.load(std::memory_order_acquire) ? nullptr : caches;
}

CachedConverter CachedConverter::ToUTF16(TextEncoding from) {
    ConverterCaches* const caches = ConverterCaches::Get();
    return {caches == nullptr ? nullptr : &caches->toUTF16Converters, from, from, Mac::UTF16Encoding()};
}

CachedConverter CachedConverter::FromUTF16(TextEncoding to) {
    ConverterCaches* const caches = ConverterCaches::Get();
    return {caches == nullptr ? nullptr : &caches->fromUTF16Converters, to, Mac::UTF16Encoding(), to};
}

CachedConverter::CachedConverter(ConverterCache* cache, TextEncoding key, TextEncoding from, TextEncoding to)
    : m_Cache(cache) {
    if (cache != nullptr) {
        m_Entry = cache->Take(key);
    }
    if (!m_Entry) {
        if (Mac::TextConverter converter(from, to); converter) {
            m_Entry = std::make_unique<ConverterCache::Entry>(ConverterCache::Entry{key, std::move(converter)});
        }
    }
}

CachedConverter::~CachedConverter() {
    if (m_Entry) {
        m_Entry->converter.Clear();
        if (m_Cache != nullptr) {
            m_Cache->Put(std::move(m_Entry));
        }
    }
}

}  // namespace Lum::Internal
