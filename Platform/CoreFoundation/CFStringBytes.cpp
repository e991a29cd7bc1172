// Strings from bytes and bytes from strings, with the converter service. Nothing is substituted: text that is
// not valid as a whole gives no string, and a string with a character that the encoding lacks gives no bytes.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "Platform/CoreFoundation/CFObject.h"
#include "Platform/CoreFoundation/CoreFoundation.h"
#include "Platform/TextEncoding/Converter.h"

using namespace Lum::Internal;

namespace {

using TextConversion::OwnedConverter;
using Bytes = std::span<const unsigned char>;

/// A buffer for a text whose length is not known yet. Short texts need no block on the heap.
class UnitBuffer {
public:
    explicit UnitBuffer(std::size_t expected) {
        if (expected > m_Capacity) {
            Grow(expected);
        }
    }

    [[nodiscard]] std::span<unsigned char> Spare() noexcept {
        return {reinterpret_cast<TextPtr>(m_First + m_Size), (m_Capacity - m_Size) * sizeof(UniChar)};
    }
    void Add(ByteCount bytes) noexcept { m_Size += bytes / sizeof(UniChar); }
    void Grow() { Grow(2 * m_Capacity); }

    CFStringRef ToString() && {
        return m_Block ? (new CoreFoundation::String(std::move(m_Block), m_Size))->Ref()
                       : CoreFoundation::CopyOf({m_First, m_Size});
    }

private:
    void Grow(std::size_t capacity) {
        std::unique_ptr<UniChar[]> block(new UniChar[capacity]);
        std::copy_n(m_First, m_Size, block.get());
        m_Block = std::move(block);
        m_First = m_Block.get();
        m_Capacity = capacity;
    }

    UniChar m_Stack[256];
    std::unique_ptr<UniChar[]> m_Block;
    UniChar* m_First = m_Stack;
    std::size_t m_Size = 0;
    std::size_t m_Capacity = std::size(m_Stack);
};

CFStringRef CreateFromBytes(Bytes bytes, CFStringEncoding encoding) {
    const OwnedConverter converter(encoding, kCFStringEncodingUTF16);
    if (!converter) {
        return nullptr;
    }
    UnitBuffer units(bytes.size());
    // In nearly all encodings a byte becomes at most one unit. In the others the buffer grows.
    while (true) {
        TextConversion::Step step = converter.Convert(bytes, units.Spare());
        bytes = bytes.subspan(step.read);
        units.Add(step.written);
        if (step.status == noErr) {
            step = converter.Flush(units.Spare());
            units.Add(step.written);
        }
        if (step.status != kTECOutputBufferFullStatus) {
            return step.status == noErr ? std::move(units).ToString() : nullptr;
        }
        units.Grow();
    }
}

/// The number of bytes written; nothing if the text does not fit or the encoding lacks a character of it.
std::optional<std::size_t> Encode(CFStringRef string, std::span<unsigned char> buffer, CFStringEncoding encoding) {
    const OwnedConverter converter(kCFStringEncodingUTF16, encoding);
    const std::span<const UniChar> units = CoreFoundation::String::From(string).Units();
    const auto text = converter.Convert({reinterpret_cast<ConstTextPtr>(units.data()), units.size_bytes()}, buffer);
    if (text.status != noErr) {
        return {};
    }
    const auto ending = converter.Flush(buffer.subspan(text.written));
    return ending.status == noErr ? std::optional(text.written + ending.written) : std::nullopt;
}

/// The most bytes that a unit becomes, and the most bytes of shift sequences before and after a text.
struct Growth {
    CFIndex perUnit, around;
};

Growth GrowthIn(CFStringEncoding encoding) {
    constexpr CFStringEncoding kBase = 0xFFFF;
    constexpr Growth kOfFormats[] = {{2, 0}, {5, 0}, {3, 0}, {4, 4}, {2, 0}, {2, 0}, {4, 0}, {4, 0}};
    // The bases whose characters are one byte each: Macintosh but for its four double-byte scripts,
    // ISO 8859, Windows and ASCII.
    struct Range {
        CFStringEncoding first, last;
    };
    constexpr Range kSingleByte[] = {{0, 0}, {4, 8}, {0x1D, 0x26}, {0x201, 0x210}, {0x500, 0x508}, {0x600, 0x600}};
    const CFStringEncoding base = encoding & kBase;
    if (base == kTextEncodingUnicodeDefault) {
        const std::size_t format = encoding >> 26 & 0xF;
        return format < std::size(kOfFormats) ? kOfFormats[format] : Growth{8, 8};
    }
    const bool isSingleByte = std::any_of(std::begin(kSingleByte), std::end(kSingleByte), [&](const Range& range) {
        return base >= range.first && base <= range.last;
    });
    // Eight: an escape sequence that names a set, a shift into it, and two bytes (RFC 1922).
    return isSingleByte ? Growth{1, 0} : Growth{8, 8};
}

}  // namespace

CFStringRef CFStringCreateWithCString(CFAllocatorRef /*allocator*/, const char* text, CFStringEncoding encoding) {
    return text == nullptr ? nullptr
                           : CreateFromBytes({reinterpret_cast<ConstTextPtr>(text), std::strlen(text)}, encoding);
}

CFStringRef CFStringCreateWithCStringNoCopy(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding,
                                            CFAllocatorRef contentsDeallocator) {
    return contentsDeallocator == kCFAllocatorNull ? CFStringCreateWithCString(allocator, text, encoding) : nullptr;
}

CFStringRef CFStringCreateWithPascalString(CFAllocatorRef /*allocator*/, const unsigned char* text,
                                           CFStringEncoding encoding) {
    return text == nullptr ? nullptr : CreateFromBytes({text + 1, text[0]}, encoding);
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
    const auto [perUnit, around] = GrowthIn(encoding);
    const CFIndex longest = (std::numeric_limits<CFIndex>::max() - around) / perUnit;
    return length > longest ? -1 : std::max<CFIndex>(length, 0) * perUnit + around;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding) {
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const std::optional<std::size_t> used =
        Encode(string, {reinterpret_cast<TextPtr>(buffer), static_cast<std::size_t>(size) - 1}, encoding);
    buffer[used.value_or(0)] = '\0';
    return used ? 1 : 0;
}

Boolean CFStringGetPascalString(CFStringRef string, unsigned char* buffer, CFIndex size, CFStringEncoding encoding) {
    constexpr CFIndex kLongest = 255;
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const auto capacity = static_cast<std::size_t>(std::min(size - 1, kLongest));
    const std::optional<std::size_t> used = Encode(string, {buffer + 1, capacity}, encoding);
    buffer[0] = static_cast<unsigned char>(used.value_or(0));
    return used ? 1 : 0;
}
