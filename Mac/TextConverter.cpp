// Calls the text encoding converter and translates its statuses.
#include "Mac/TextConverter.h"

#include "Platform/TextEncoding/Utf8.h"

namespace Lum::Internal::Mac {
namespace {

ConversionStatus StatusOf(OSStatus status) noexcept {
    switch (status) {
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

ConversionResult ResultOf(const TextConversion::Step& step) noexcept {
    return {StatusOf(step.status), step.read, step.written};
}

TextConversion::Input BytesOf(std::string_view bytes) noexcept {
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}
TextConversion::Output BytesOf(std::span<char> bytes) noexcept {
    return {reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()};
}

}  // namespace

ConversionResult TextConverter::Convert(std::string_view input, std::span<char> output) {
    return ResultOf(m_Converter.Convert(BytesOf(input), BytesOf(output)));
}

ConversionResult TextConverter::Flush(std::span<char> output) { return ResultOf(m_Converter.Flush(BytesOf(output))); }

ConversionResult UTF8ToUTF16(std::string_view input, std::span<char> output) noexcept {
    return ResultOf(TextConversion::FastestUtf8().toUtf16(BytesOf(input), BytesOf(output)));
}

ConversionResult UTF16ToUTF8(std::string_view input, std::span<char> output) noexcept {
    return ResultOf(TextConversion::FastestUtf8().fromUtf16(BytesOf(input), BytesOf(output)));
}

}  // namespace Lum::Internal::Mac
