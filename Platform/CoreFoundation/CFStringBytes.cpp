// Strings from bytes, and bytes from strings, over the converter service. Nothing is replaced: text
// that is not valid from end to end gives no string, and a string that an encoding cannot say gives no
// bytes.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/CoreFoundation/CFStringObject.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

using Bytes = std::span<const unsigned char>;

struct Dispose {
    void operator()(TECObjectRef converter) const noexcept { TECDisposeConverter(converter); }
};
using Converter = std::unique_ptr<std::remove_pointer_t<TECObjectRef>, Dispose>;

/// Null if there is none.
Converter MakeConverter(CFStringEncoding from, CFStringEncoding to) {
    TECObjectRef converter = nullptr;
    return Converter(TECCreateConverter(&converter, from, to) == noErr ? converter : nullptr);
}

/// A text of unknown size on its way in: short ones need no block of their own.
class Units {
public:
    explicit Units(std::size_t expected) {
        if (expected > m_Room) {
            Grow(expected);
        }
    }

    [[nodiscard]] TextPtr End() noexcept { return reinterpret_cast<TextPtr>(m_First + m_Size); }
    [[nodiscard]] ByteCount Room() const noexcept { return (m_Room - m_Size) * sizeof(UniChar); }
    void Add(ByteCount bytes) noexcept { m_Size += bytes / sizeof(UniChar); }
    void Grow() { Grow(2 * m_Room); }

    CFStringRef ToString() && {
        return m_Block ? (new CoreFoundation::String(std::move(m_Block), m_Size))->Ref()
                       : CoreFoundation::CopyOf({m_First, m_Size});
    }

private:
    void Grow(std::size_t room) {
        auto block = std::make_unique_for_overwrite<UniChar[]>(room);
        std::copy_n(m_First, m_Size, block.get());
        m_Block = std::move(block);
        m_First = m_Block.get();
        m_Room = room;
    }

    UniChar m_Stack[256];
    std::unique_ptr<UniChar[]> m_Block;
    UniChar* m_First = m_Stack;
    std::size_t m_Size = 0;
    std::size_t m_Room = std::size(m_Stack);
};

CFStringRef CreateFromBytes(Bytes bytes, CFStringEncoding encoding) {
    const Converter converter = MakeConverter(encoding, kCFStringEncodingUTF16);
    if (!converter) {
        return nullptr;
    }
    Units units(bytes.size());
    OSStatus status = noErr;
    // A byte is a unit at most in nearly all encodings; where it may be more, the room grows.
    while (true) {
        ByteCount read = 0;
        ByteCount written = 0;
        status =
            TECConvertText(converter.get(), bytes.data(), bytes.size(), &read, units.End(), units.Room(), &written);
        bytes = bytes.subspan(read);
        units.Add(written);
        if (status == noErr) {
            status = TECFlushText(converter.get(), units.End(), units.Room(), &written);
            units.Add(written);
        }
        if (status != kTECOutputBufferFullStatus) {
            return status == noErr ? std::move(units).ToString() : nullptr;
        }
        units.Grow();
    }
}

/// The number of bytes written; nothing if the text does not fit or cannot be said.
std::optional<std::size_t> Encode(CFStringRef string, std::span<unsigned char> buffer, CFStringEncoding encoding) {
    const Converter converter = MakeConverter(kCFStringEncodingUTF16, encoding);
    if (!converter) {
        return {};
    }
    const std::span<const UniChar> units = CoreFoundation::String::From(string).Units();
    ByteCount read = 0;
    ByteCount written = 0;
    ByteCount flushed = 0;
    if (TECConvertText(converter.get(), reinterpret_cast<ConstTextPtr>(units.data()), units.size_bytes(), &read,
                       buffer.data(), buffer.size(), &written) != noErr ||
        TECFlushText(converter.get(), buffer.data() + written, buffer.size() - written, &flushed) != noErr) {
        return {};
    }
    return written + flushed;
}

/// What a unit can become at most, and what can stand around a text, in bytes.
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
    const auto room = static_cast<std::size_t>(std::min(size - 1, kLongest));
    const std::optional<std::size_t> used = Encode(string, {buffer + 1, room}, encoding);
    buffer[0] = static_cast<unsigned char>(used.value_or(0));
    return used ? 1 : 0;
}
