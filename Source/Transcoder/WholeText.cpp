// The conversion of whole texts with a report of where and why it ended.
#include <algorithm>
#include <cstddef>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"
#include "Mac/TextEncodings.h"
#include "Source/Transcoder/ConverterCache.h"
#include "Source/Transcoder/ResizeUncleared.h"
#include "Source/Transcoder/Utf8Text.h"

namespace Lum {

using namespace Internal;

namespace {

/// A text that grows at its end, with spare capacity.
template <class Unit>
class Growing {
public:
    /// Begins with a capacity of `size` units or a little more.
    explicit Growing(std::size_t size) { GrowBy(size); }

    std::span<char> Spare() {
        if (m_Text.size() - m_Size < kMinimum) {
            GrowBy(m_Text.size());
        }
        return {reinterpret_cast<char*>(m_Text.data() + m_Size), (m_Text.size() - m_Size) * sizeof(Unit)};
    }
    void Add(std::size_t bytes) { m_Size += bytes / sizeof(Unit); }
    std::basic_string<Unit> Text() && {
        m_Text.resize(m_Size);
        return std::move(m_Text);
    }

private:
    static constexpr std::size_t kMinimum = 64;  // units; more than any element becomes

    void GrowBy(std::size_t size) {
        if (size > m_Text.max_size() - m_Text.size() - kMinimum) {
            throw std::bad_alloc();
        }
        ResizeUncleared(m_Text, m_Text.size() + size + kMinimum);
    }

    std::basic_string<Unit> m_Text;
    std::size_t m_Size = 0;
};

/// Calls `convert` with the rest of the input until all is converted, then `finish`. Ends at the first element
/// that cannot be converted.
template <class Unit, class Convert, class Finish>
ConvertedText<std::basic_string<Unit>> ConvertAll(std::string_view bytes, const Convert& convert,
                                                  const Finish& finish) {
    // Most elements become at most as many units as they have bytes.
    Growing<Unit> text(bytes.size());
    std::size_t read = 0;
    const auto take = [&](const ConversionResult& result) {
        text.Add(result.written);
        read += result.read;
        return result.status;
    };
    ConversionStatus status = ConversionStatus::kOutputFull;
    while (status == ConversionStatus::kOutputFull) {
        status = take(convert(bytes.substr(read), text.Spare()));
    }
    if (status == ConversionStatus::kDone) {
        do {
            status = take(finish(text.Spare()));
        } while (status == ConversionStatus::kOutputFull);
    }
    return {std::move(text).Text(), status, read};
}

template <class Unit>
ConvertedText<std::basic_string<Unit>> ConvertAll(std::string_view bytes, const CachedConverter& cached) {
    if (!cached) {
        return {{}, ConversionStatus::kNoSuchEncoding, 0};
    }
    return ConvertAll<Unit>(
        bytes,
        [&](std::string_view input, std::span<char> output) {
            return input.empty() ? ConversionResult{} : cached.Converter().Convert(input, output);
        },
        [&](std::span<char> output) { return cached.Converter().Flush(output); });
}

ConversionResult NothingToFinish(std::span<char> /*output*/) noexcept { return {}; }

}  // namespace

ConvertedText<std::u16string> ConvertTextToUTF16(std::string_view bytes, const std::string& from) {
    const TextEncoding encoding = EncodingToCharSetID(from);
    if (encoding == Mac::UTF8Encoding()) {
        return ConvertAll<char16_t>(bytes, Internal::UTF8ToUTF16, NothingToFinish);
    }
    return ConvertAll<char16_t>(bytes, CachedConverter::ToUTF16(encoding));
}

ConvertedText<std::string> ConvertTextFromUTF16(std::u16string_view text, const std::string& to) {
    const std::string_view units(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
    const TextEncoding encoding = EncodingToCharSetID(to);
    auto result = encoding == Mac::UTF8Encoding() ? ConvertAll<char>(units, Internal::UTF16ToUTF8, NothingToFinish)
                                                  : ConvertAll<char>(units, CachedConverter::FromUTF16(encoding));
    result.offset /= sizeof(char16_t);
    return result;
}

ConvertedText<std::string> ConvertText(std::string_view bytes, const std::string& from, const std::string& to) {
    const auto wide = ConvertTextToUTF16(bytes, from);
    if (wide.status == ConversionStatus::kDone) {
        if (auto result = ConvertTextFromUTF16(wide.text, to); result.status == ConversionStatus::kDone) {
            result.offset = bytes.size();
            return result;
        }
    }
    // Only a stream converter knows which bytes became the element that cannot be converted.
    StreamConverter converter(from, to);
    return ConvertAll<char>(
        bytes, [&](std::string_view input, std::span<char> output) { return converter.Convert(input, output); },
        [&](std::span<char> output) { return converter.Finish(output); });
}

}  // namespace Lum
