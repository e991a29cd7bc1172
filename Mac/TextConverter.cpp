// Calls the text encoding converter and reads its statuses.
#include "Mac/TextConverter.h"

#include <algorithm>
#include <limits>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Mac {
namespace {

TECObjectRef Ref(void* converter) noexcept { return static_cast<TECObjectRef>(converter); }

const unsigned char* Bytes(const char* bytes) noexcept { return reinterpret_cast<const unsigned char*>(bytes); }
unsigned char* Bytes(char* bytes) noexcept { return reinterpret_cast<unsigned char*>(bytes); }

Outcome OutcomeOf(OSStatus status) noexcept {
    switch (status) {
        case noErr:
        case kTECUsedFallbacksStatus:
            return Outcome::kDone;
        case kTECOutputBufferFullStatus:
            return Outcome::kFull;
        case kTextMalformedInputErr:
            return Outcome::kMalformed;
        case kTECPartialCharErr:
            return Outcome::kIncomplete;
        case kTECUnmappableElementErr:
            return Outcome::kUnmappable;
        default:
            return Outcome::kFailed;
    }
}

}  // namespace

TextConverter::TextConverter(std::uint32_t from, std::uint32_t to) {
    TECObjectRef converter = nullptr;
    if (TECCreateConverter(&converter, from, to) == noErr) {
        m_Converter = converter;
    }
}

TextConverter::~TextConverter() {
    if (m_Converter != nullptr) {
        TECDisposeConverter(Ref(m_Converter));
    }
}

Step TextConverter::Convert(std::string_view input, std::span<char> output) {
    ByteCount read = 0;
    ByteCount written = 0;
    const OSStatus status = TECConvertText(Ref(m_Converter), Bytes(input.data()), input.size(), &read,
                                           Bytes(output.data()), output.size(), &written);
    return {OutcomeOf(status), read, written};
}

Step TextConverter::Flush(std::span<char> output) {
    ByteCount written = 0;
    const OSStatus status = TECFlushText(Ref(m_Converter), Bytes(output.data()), output.size(), &written);
    return {OutcomeOf(status), 0, written};
}

void TextConverter::Clear() noexcept { TECClearConverterContextInfo(Ref(m_Converter)); }

}  // namespace Mac
