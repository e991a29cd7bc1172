// UTF-8 to and from UTF-16 without a converter, since neither has a state. The results are those of a converter,
// after which there is nothing to flush.
#pragma once

#include <span>
#include <string_view>

#include <Lum/Transcoder.h>

#include "Source/Utf8/Utf8.h"

namespace Lum::Internal {

inline ConversionResult ConvertUtf8(TextConversion::ConvertFunction convert, std::string_view input,
                                    std::span<char> output) noexcept {
    // By Ending.
    constexpr ConversionStatus kStatuses[] = {ConversionStatus::kDone, ConversionStatus::kOutputFull,
                                              ConversionStatus::kMalformed, ConversionStatus::kIncomplete,
                                              ConversionStatus::kUnmappable};
    const TextConversion::Progress progress =
        convert({reinterpret_cast<const unsigned char*>(input.data()), input.size()},
                {reinterpret_cast<unsigned char*>(output.data()), output.size()});
    return {kStatuses[static_cast<std::size_t>(progress.ending)], progress.read, progress.written};
}

inline ConversionResult UTF8ToUTF16(std::string_view input, std::span<char> output) noexcept {
    return ConvertUtf8(TextConversion::FastestUtf8().toUtf16, input, output);
}

inline ConversionResult UTF16ToUTF8(std::string_view input, std::span<char> output) noexcept {
    return ConvertUtf8(TextConversion::FastestUtf8().fromUtf16, input, output);
}

}  // namespace Lum::Internal
