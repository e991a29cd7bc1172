// Keeps a string as the UTF-8 it was made from, once that is known to be well formed (RFC 3629).
#include "Platform/CoreFoundation/CFString.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>

#include "Platform/CoreFoundation/CFStringObject.h"

namespace {

/// A lead byte's range, and the range of the byte behind it; the further bytes are 80 to BF.
struct Form {
    unsigned char firstLow, firstHigh, secondLow, secondHigh;
    std::size_t size;
};

// The table of section 4.
constexpr Form kForms[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text[0]);
        const auto* const form = std::find_if(std::begin(kForms), std::end(kForms), [&](const Form& candidate) {
            return first >= candidate.firstLow && first <= candidate.firstHigh;
        });
        if (form == std::end(kForms) || text.size() < form->size) {
            return false;
        }
        if (form->size > 1) {
            const auto second = static_cast<unsigned char>(text[1]);
            if (second < form->secondLow || second > form->secondHigh ||
                !std::all_of(text.begin() + 2, text.begin() + static_cast<std::ptrdiff_t>(form->size),
                             IsContinuation)) {
                return false;
            }
        }
        text.remove_prefix(form->size);
    }
    return true;
}

}  // namespace

using CoreFoundation::String;

CFStringRef CFStringCreateWithCString(CFAllocatorRef /*allocator*/, const char* text, CFStringEncoding encoding) {
    return encoding == kCFStringEncodingUTF8 && IsUtf8(text) ? (new String(text))->Ref() : nullptr;
}

CFIndex CFStringGetLength(CFStringRef string) {
    // One unit for each character, two for those of four bytes.
    CFIndex units = 0;
    for (const char c : String::From(string).Utf8()) {
        units += (IsContinuation(c) ? 0 : 1) + (static_cast<unsigned char>(c) >= 0xF0 ? 1 : 0);
    }
    return units;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding /*encoding*/) {
    return length > std::numeric_limits<CFIndex>::max() / 3 ? -1 : 3 * length;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding) {
    const std::string& text = String::From(string).Utf8();
    if (encoding != kCFStringEncodingUTF8 || size <= 0 || text.size() >= static_cast<std::size_t>(size)) {
        return 0;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return 1;
}
