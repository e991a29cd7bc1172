// Strings from bytes, and bytes from strings. Nothing is replaced: text that is not valid gives no
// string, and a string that an encoding cannot say gives no bytes.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/CoreFoundation/CFStringObject.h"

namespace {

/// A lead byte's range, and the range of the byte behind it; the further bytes are 80 to BF.
struct Form {
    unsigned char firstLow, firstHigh, secondLow, secondHigh;
    std::size_t size;
};

// RFC 3629, the table of section 4, without the ASCII row.
constexpr Form kForms[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The size of the well-formed sequence that a text begins with; 0 if there is none.
std::size_t SequenceSize(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) {
        return 1;
    }
    const auto* const form = std::find_if(std::begin(kForms), std::end(kForms), [&](const Form& candidate) {
        return first >= candidate.firstLow && first <= candidate.firstHigh;
    });
    if (form == std::end(kForms) || text.size() < form->size) {
        return 0;
    }
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isWhole =
        second >= form->secondLow && second <= form->secondHigh &&
        std::all_of(text.begin() + 2, text.begin() + static_cast<std::ptrdiff_t>(form->size), IsContinuation);
    return isWhole ? form->size : 0;
}

/// Writes the units of a UTF-8 text, which are no more than its bytes; their number.
std::optional<std::size_t> DecodeUtf8(std::string_view text, UniChar* units) {
    UniChar* next = units;
    while (!text.empty()) {
        const std::size_t size = SequenceSize(text);
        if (size == 0) {
            return {};
        }
        auto scalar = static_cast<std::uint32_t>(static_cast<unsigned char>(text[0]));
        scalar &= size == 1 ? 0x7FU : 0x7FU >> size;
        for (std::size_t i = 1; i < size; ++i) {
            scalar = scalar << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
        }
        if (scalar >= 0x10000) {
            *next++ = static_cast<UniChar>(0xD7C0 + (scalar >> 10));
            scalar = 0xDC00 | (scalar & 0x3FF);
        }
        *next++ = static_cast<UniChar>(scalar);
        text.remove_prefix(size);
    }
    return static_cast<std::size_t>(next - units);
}

bool IsLow(UniChar unit) { return (unit & 0xFC00) == 0xDC00; }
bool IsHigh(UniChar unit) { return (unit & 0xFC00) == 0xD800; }

/// Writes the UTF-8 of units; nothing if it does not fit or a surrogate stands alone.
std::optional<std::size_t> EncodeUtf8(std::span<const UniChar> units, std::span<char> bytes) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t scalar = units[i];
        if (IsHigh(units[i]) && i + 1 < units.size() && IsLow(units[i + 1])) {
            scalar = 0x10000 + ((scalar & 0x3FF) << 10) + (units[++i] & 0x3FFU);
        } else if (IsHigh(units[i]) || IsLow(units[i])) {
            return {};
        }
        const unsigned size = scalar < 0x80 ? 1 : scalar < 0x800 ? 2 : scalar < 0x10000 ? 3 : 4;
        if (bytes.size() - at < size) {
            return {};
        }
        for (unsigned rest = size - 1; rest > 0; --rest, scalar >>= 6) {
            bytes[at + rest] = static_cast<char>(0x80 | (scalar & 0x3F));
        }
        bytes[at] = static_cast<char>(size == 1 ? scalar : (0xF00 >> size & 0xFF) | scalar);
        at += size;
    }
    return at;
}

bool IsKnown(CFStringEncoding encoding) {
    return encoding == kCFStringEncodingUTF8 || encoding == kCFStringEncodingASCII;
}

CFStringRef Decode(std::string_view bytes, CFStringEncoding encoding) {
    constexpr std::size_t kMostOnStack = 512;
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
    if (!IsKnown(encoding) || (encoding == kCFStringEncodingASCII && !isAscii)) {
        return nullptr;
    }
    UniChar stack[kMostOnStack];
    std::unique_ptr<UniChar[]> heap;
    if (bytes.size() > kMostOnStack) {
        heap = std::make_unique_for_overwrite<UniChar[]>(bytes.size());
    }
    UniChar* const units = heap ? heap.get() : stack;
    const std::optional<std::size_t> size = DecodeUtf8(bytes, units);
    return size ? CoreFoundation::CopyOf({units, *size}) : nullptr;
}

std::optional<std::size_t> Encode(CFStringRef string, std::span<char> bytes, CFStringEncoding encoding) {
    const std::span<const UniChar> units = CoreFoundation::String::From(string).Units();
    const bool isAscii = std::all_of(units.begin(), units.end(), [](UniChar unit) { return unit < 0x80; });
    if (!IsKnown(encoding) || (encoding == kCFStringEncodingASCII && !isAscii)) {
        return {};
    }
    return EncodeUtf8(units, bytes);
}

}  // namespace

CFStringRef CFStringCreateWithCString(CFAllocatorRef /*allocator*/, const char* text, CFStringEncoding encoding) {
    return text == nullptr ? nullptr : Decode(text, encoding);
}

CFStringRef CFStringCreateWithCStringNoCopy(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding,
                                            CFAllocatorRef contentsDeallocator) {
    return contentsDeallocator == kCFAllocatorNull ? CFStringCreateWithCString(allocator, text, encoding) : nullptr;
}

CFStringRef CFStringCreateWithPascalString(CFAllocatorRef /*allocator*/, const unsigned char* text,
                                           CFStringEncoding encoding) {
    return text == nullptr ? nullptr : Decode({reinterpret_cast<const char*>(text + 1), text[0]}, encoding);
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding /*encoding*/) {
    return length > std::numeric_limits<CFIndex>::max() / 3 ? -1 : 3 * length;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding) {
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const std::optional<std::size_t> used = Encode(string, {buffer, static_cast<std::size_t>(size) - 1}, encoding);
    buffer[used.value_or(0)] = '\0';
    return used ? 1 : 0;
}

Boolean CFStringGetPascalString(CFStringRef string, unsigned char* buffer, CFIndex size, CFStringEncoding encoding) {
    constexpr CFIndex kLongest = 255;
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const auto room = static_cast<std::size_t>(std::min(size - 1, kLongest));
    const std::optional<std::size_t> used = Encode(string, {reinterpret_cast<char*>(buffer + 1), room}, encoding);
    buffer[0] = static_cast<unsigned char>(used.value_or(0));
    return used ? 1 : 0;
}
