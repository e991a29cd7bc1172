// Strings by number: index, single strings, bundle tables, and the cache of what was looked up last.
#include <Lum/CString.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Platform/CoreFoundation/CoreFoundation.h"
#include "Platform/Resources/Resources.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "cstring/HostOwners.h"

using namespace Lum::Internal;

char** gStrResTable = nullptr;
bool gStrResTableInited = false;
CFMutableArrayRef CString::m_arrayOfStringTables = nullptr;

namespace {

/// An entry of the index, in the host's byte order.
struct Entry {
    std::uint16_t number;
    std::uint16_t position;
};
static_assert(sizeof(Entry) == 4);

struct CachedString {
    unsigned int number = 0;  // 0 for none
    bool isFound = false;
    CString text;
};

constexpr std::size_t kSlots = 64;
/// Lives as long as the process once there is one.
std::array<CachedString, kSlots>* slots = nullptr;

/// Compatibility: numbers above 8 have odd slots only. Applications rely on which numbers
/// displace one another.
std::size_t SlotOf(unsigned int number) { return (number | (number > 8 ? 1U : 0U)) % kSlots; }

std::uint16_t NumberAt(const char* entries, std::size_t i) {
    std::uint16_t number = 0;
    std::memcpy(&number, entries + i * sizeof(Entry), sizeof number);
    return number;
}

/// Most files have their index in order. Branch-free, so that the compiler makes vector code of it.
bool IsSorted(const char* entries, std::size_t count) {
    int signs = 0;  // negative where one number is less than the one before
    for (std::size_t i = 1; i < count; ++i) {
        signs |= int{NumberAt(entries, i)} - int{NumberAt(entries, i - 1)};
    }
    return signs >= 0;
}

/// Copies the entry of a number, if the index has one; of the number, the low 16 bits count.
bool FindInIndex(unsigned int number, Entry& entry) {
    // As std::bsearch, with which of several equal numbers it finds, but without its calls.
    const auto wanted = static_cast<std::uint16_t>(number);
    std::size_t first = 0;
    auto last = static_cast<std::size_t>(NumStrRes());
    while (first < last) {
        const std::size_t middle = (first + last) / 2;
        const std::uint16_t found = NumberAt(*gStrResTable, middle);
        if (found == wanted) {
            std::memcpy(&entry, *gStrResTable + middle * sizeof entry, sizeof entry);
            return true;
        }
        const bool isBehind = found < wanted;
        first = isBehind ? middle + 1 : first;
        last = isBehind ? last : middle;
    }
    return false;
}

/// The string of a single-string resource; false if there is none. One that ends too early is cut.
bool GetSingleString(unsigned int number, Str255 text) {
    auto* const handle = reinterpret_cast<Handle>(GetString(static_cast<ResID>(static_cast<std::uint16_t>(number))));
    ThrowIfMemoryRanOut();
    if (handle == nullptr) {
        return false;
    }
    const HandleLock lock(handle);
    const Size size = GetHandleSize(handle);
    text[0] = 0;
    if (size > 0) {
        const auto length = static_cast<unsigned char>(**handle);
        text[0] = size > length ? length : static_cast<unsigned char>(size - 1);
        std::memcpy(text + 1, *handle + 1, text[0]);
    }
    return true;
}

/// The text of the key in the first table that has it; the key itself if none has.
OwnedString LookUpInTables(CFStringRef key, CFArrayRef tables) {
    auto* const bundle = CFBundleGetMainBundle();
    OwnedString answer(CFBundleCopyLocalizedString(bundle, key, key, nullptr));
    for (CFIndex i = 0; answer.get() == key && i < CFArrayGetCount(tables); ++i) {
        const auto* const table = static_cast<CFStringRef>(CFArrayGetValueAtIndex(tables, i));
        answer.reset(CFBundleCopyLocalizedString(bundle, key, key, table));
    }
    return answer;
}

OwnedString KeyOf(unsigned int number) {
    char text[10];  // Compatibility: cuts the longest numbers, as the keys in applications' tables are.
    std::snprintf(text, sizeof text, "%d", static_cast<int>(number));
    return OwnedString(CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingASCII));
}

}  // namespace

// ---- The index ----------------------------------------------------------------------------------

int StrResCmp(const void* a, const void* b) {
    std::uint16_t numberA = 0, numberB = 0;
    std::memcpy(&numberA, a, sizeof numberA);
    std::memcpy(&numberB, b, sizeof numberB);
    return int{numberA} - int{numberB};
}

void CheckStrResTableForDups(void* /*table*/, int /*count*/) {}

int NumStrRes() {
    // An index whose file has been closed has no entries.
    return gStrResTable == nullptr ? 0 : static_cast<int>(GetHandleSize(gStrResTable) / Size{sizeof(Entry)});
}

void InitStrResTable() {
    constexpr ResType kIndexType = 0x5354526D;  // 'STRm'
    char** const index = GetResource(kIndexType, 0);
    ThrowIfMemoryRanOut();
    gStrResTableInited = true;
    gStrResTable = index;
    if (gStrResTable != nullptr) {
        const HandleLock lock(gStrResTable);
        if (!IsSorted(*gStrResTable, static_cast<std::size_t>(NumStrRes()))) {
            std::qsort(*gStrResTable, static_cast<std::size_t>(NumStrRes()), sizeof(Entry), StrResCmp);
        }
    }
}

// ---- The look-up --------------------------------------------------------------------------------

void CString::AddStringTableForSearch(const char* name) {
    const OwnedString string(CFStringCreateWithCString(kCFAllocatorDefault, name, kCFStringEncodingASCII));
    if (m_arrayOfStringTables == nullptr) {
        m_arrayOfStringTables = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    }
    if (string != nullptr) {
        CFArrayAppendValue(m_arrayOfStringTables, string.get());
    }
}

bool CString::LoadString(unsigned int id) {
    if (!gStrResTableInited) {
        delete slots;
        slots = nullptr;
    }
    if (slots == nullptr) {
        slots = new std::array<CachedString, kSlots>;
    }
    CachedString& slot = (*slots)[SlotOf(id)];
    if (slot.number == id && id != 0) {
        *this = slot.text;
        return slot.isFound;
    }
    if (!gStrResTableInited) {
        InitStrResTable();
    }
    slot.number = 0;  // until the look-up has succeeded
    const bool isFound = LookUp(id);
    slot.text = *this;
    slot.isFound = isFound;
    slot.number = id;
    return isFound;
}

bool CString::LookUp(unsigned int id) {
    constexpr unsigned kFirstList = 200, kStringsPerList = 500;
    Str255 text;
    if (Entry entry{}; FindInIndex(id, entry)) {
        GetIndString(text, static_cast<ResID>(kFirstList + entry.position / kStringsPerList),
                     static_cast<short>(entry.position % kStringsPerList + 1));
        ThrowIfMemoryRanOut();
        if (text[0] != 0) {
            FromMac(text);
        }
        return text[0] != 0;
    }
    if (GetSingleString(id, text)) {
        FromMac(text);
        return true;
    }
    const OwnedString key = KeyOf(id);
    SetFromCFStringRef(LookUpInTables(key.get(), m_arrayOfStringTables).get(), kCFStringEncodingUTF16);
    if (!IsEmpty()) {
        return true;
    }
    // Compatibility: numbers outside of the middle range are asked for once more, should the tables' look-up
    // have changed which resources there are.
    const bool isSingle = (id < 2000 || id > 20000) && GetSingleString(id, text);
    if (isSingle) {
        FromMac(text);
    }
    return isSingle;
}
