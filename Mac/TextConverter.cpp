// Calls the text encoding converter and translates its statuses.
#include "Mac/TextConverter.h"

#include <new>

namespace Lum::Internal::Mac {
namespace {

OSStatus Checked(OSStatus status) {
    if (status == memFullErr) {
        throw std::bad_alloc();
    }
    return status;
}

ConversionStatus StatusOf(OSStatus status) {
    switch (Checked(status)) {
        case noErr:
        case kTECUsedFallbacksStatus:
            return ConversionStatus::kDone;
        case kTECOutputBufferFullStatus:
            return ConversionStatus::kOutputFull;
        case kTECPartialCharErr:
            return ConversionStatus::kIncomplete;
        case kTECUnmappableElementErr:
            return ConversionStatus::kUnmappable;
        default:
            return ConversionStatus::kMalformed;
    }
}

}  // namespace

TextConverter::TextConverter(TextEncoding from, TextEncoding to) {
    TECObjectRef converter = nullptr;
    Checked(TECCreateConverter(&converter, from, to));
    m_Converter.reset(converter);
}

ConversionResult TextConverter::Convert(std::string_view input, std::span<char> output) {
    ByteCount read = 0;
    ByteCount written = 0;
    const OSStatus status =
        TECConvertText(m_Converter.get(), reinterpret_cast<ConstTextPtr>(input.data()), input.size(), &read,
                       reinterpret_cast<TextPtr>(output.data()), output.size(), &written);
    return {StatusOf(status), read, written};
}

ConversionResult TextConverter::Flush(std::span<char> output) {
    ByteCount written = 0;
    const OSStatus status =
        TECFlushText(m_Converter.get(), reinterpret_cast<TextPtr>(output.data()), output.size(), &written);
    return {StatusOf(status), 0, written};
}

}  // namespace Lum::Internal::Mac
