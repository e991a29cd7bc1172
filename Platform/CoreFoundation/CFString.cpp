// Strings as sequences of UTF-16 code units: what is neither about bytes nor about numbers.
#include "Platform/CoreFoundation/CFString.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>

#include "Platform/CoreFoundation/CFStringObject.h"

using CoreFoundation::String;

namespace {

std::span<const UniChar> Cut(std::span<const UniChar> units, CFRange range) {
    const auto size = static_cast<CFIndex>(units.size());
    const CFIndex from = std::clamp<CFIndex>(range.location, 0, size);
    const CFIndex length = std::clamp<CFIndex>(range.length, 0, size - from);
    return units.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(length));
}

bool IsText(const UniChar* units, CFIndex count) { return count == 0 || (count > 0 && units != nullptr); }

}  // namespace

CFStringRef CoreFoundation::CopyOf(std::span<const UniChar> units) {
    auto copy = std::make_unique_for_overwrite<UniChar[]>(units.size());
    std::copy(units.begin(), units.end(), copy.get());
    return (new String(std::move(copy), units.size()))->Ref();
}

CFTypeID CFStringGetTypeID() { return static_cast<CFTypeID>(CoreFoundation::Kind::String); }

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef /*allocator*/, const UniChar* units, CFIndex count) {
    return IsText(units, count) ? CoreFoundation::CopyOf({units, static_cast<std::size_t>(count)}) : nullptr;
}

CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef /*allocator*/, const UniChar* units, CFIndex count,
                                               CFAllocatorRef contentsDeallocator) {
    if (!IsText(units, count) || contentsDeallocator != kCFAllocatorNull) {
        return nullptr;
    }
    return (new String(std::span(units, static_cast<std::size_t>(count))))->Ref();
}

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef /*allocator*/, CFStringRef string, CFRange range) {
    return CoreFoundation::CopyOf(Cut(String::From(string).Units(), range));
}

CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(String::From(string).Units().size()); }

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    const std::span<const UniChar> units = Cut(String::From(string).Units(), range);
    std::copy(units.begin(), units.end(), buffer);
}
