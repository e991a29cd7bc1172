// Texts between 16-bit units and the application's encoding, through the text encoding services.
#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "Platform/TextEncoding/Converter.h"
#include "Platform/Uc16/FormatTexts.h"
#include "Platform/Uc16/Uc16.h"
#include "Source/Base/UnitText.h"

using namespace Lum::Internal;

namespace {

constexpr TextEncoding kUtf16 =
    CreateTextEncoding(kTextEncodingUnicodeDefault, kTextEncodingDefaultVariant, kUnicode16BitFormat);

using TextConversion::OwnedConverter;

template <class Unit>
std::span<const unsigned char> BytesOf(const Unit* units, std::size_t count) {
    return {reinterpret_cast<ConstTextPtr>(units), count * sizeof(Unit)};
}
template <class Unit>
std::span<unsigned char> BytesOf(Unit* units, std::size_t count) {
    return {reinterpret_cast<TextPtr>(units), count * sizeof(Unit)};
}

}  // namespace

namespace Lum::Internal::Uc16 {

std::size_t NarrowToUnits(const char* text, std::size_t limit, unsigned short* units) {
    std::array<unsigned short, 256> counted;
    const OwnedConverter converter(GetApplicationTextEncoding(), kUtf16);
    std::size_t made = 0;
    std::size_t pending = 0;  // bytes of a character whose end has not been read
    while (made < limit) {
        // A byte becomes one unit at most, so the text has as many bytes as units are missing, or ends with its NUL.
        const std::size_t capacity = std::min(limit - made, counted.size());
        const std::size_t size = strnlen(text, std::max(capacity, pending + 1));
        if (size <= pending) {
            break;
        }
        const auto step =
            converter.Convert(BytesOf(text, size), BytesOf(units != nullptr ? units + made : counted.data(), capacity));
        text += step.read;
        made += step.written / sizeof(unsigned short);
        pending = size - step.read;
        const bool goesOn = step.status == noErr || step.status == kTECPartialCharErr ||
                            (step.status == kTECOutputBufferFullStatus && step.written > 0);
        if (!goesOn) {
            break;
        }
    }
    return made;
}

}  // namespace Lum::Internal::Uc16

std::size_t uc16_wcstombs(char* bytes, const unsigned short* text, std::size_t size) {
    const OwnedConverter converter(kUtf16, GetApplicationTextEncoding());
    const std::size_t length = CountUnits(text);
    std::size_t written = converter.Convert(BytesOf(text, length), BytesOf(bytes, size)).written;
    written += converter.Flush(BytesOf(bytes + written, size - written)).written;
    if (written < size) {
        bytes[written] = '\0';
    }
    return written;
}
