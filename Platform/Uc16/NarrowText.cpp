// Texts between 16-bit units and the application's encoding, through the text encoding services.
#include "Platform/Uc16/NarrowText.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Platform/Uc16/Uc16.h"
#include "Platform/Uc16/UnitRun.h"

namespace {

constexpr TextEncoding kUtf16 =
    CreateTextEncoding(kTextEncodingUnicodeDefault, kTextEncodingDefaultVariant, kUnicode16BitFormat);

/// What one call has read and written, in bytes.
struct Step {
    OSStatus status = noErr;
    ByteCount read = 0;
    ByteCount written = 0;
};

class Converter {
public:
    /// Without a converter for the encodings, every text is empty.
    Converter(TextEncoding from, TextEncoding to) {
        if (TECCreateConverter(&m_Converter, from, to) != noErr) {
            m_Converter = nullptr;
        }
    }
    ~Converter() {
        if (m_Converter != nullptr) {
            TECDisposeConverter(m_Converter);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    Step Convert(const void* from, std::size_t size, void* to, std::size_t room) {
        Step step{kTECNoConversionPathErr};
        if (m_Converter != nullptr) {
            step.status = TECConvertText(m_Converter, static_cast<ConstTextPtr>(from), size, &step.read,
                                         static_cast<TextPtr>(to), room, &step.written);
        }
        return step;
    }
    std::size_t Flush(void* to, std::size_t room) {
        Step step;
        if (m_Converter != nullptr) {
            TECFlushText(m_Converter, static_cast<TextPtr>(to), room, &step.written);
        }
        return step.written;
    }

private:
    TECObjectRef m_Converter = nullptr;
};

}  // namespace

namespace Uc16 {

std::size_t NarrowToUnits(const char* text, std::size_t limit, unsigned short* units) {
    std::array<unsigned short, 256> counted;
    Converter converter(GetApplicationTextEncoding(), kUtf16);
    std::size_t made = 0;
    std::size_t pending = 0;  // bytes of a character whose end has not been read
    while (made < limit) {
        // A byte gives one unit at most, so the text has as many bytes as units are missing, or its NUL.
        const std::size_t room = std::min(limit - made, counted.size());
        const std::size_t size = strnlen(text, std::max(room, pending + 1));
        if (size <= pending) {
            break;
        }
        const Step step = converter.Convert(text, size, units != nullptr ? units + made : counted.data(),
                                            room * sizeof(unsigned short));
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

}  // namespace Uc16

std::size_t uc16_wcstombs(char* bytes, const unsigned short* text, std::size_t size) {
    Converter converter(kUtf16, GetApplicationTextEncoding());
    const std::size_t length = Uc16::CountBefore<0>(text, {});
    std::size_t written = converter.Convert(text, length * sizeof(unsigned short), bytes, size).written;
    written += converter.Flush(bytes + written, size - written);
    if (written < size) {
        bytes[written] = '\0';
    }
    return written;
}
