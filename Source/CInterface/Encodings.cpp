// Conversions between encodings, for C.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>
#include <Lum/Units.h>

#include "Source/CInterface/Call.h"

struct lum_converter {
    Lum::StreamConverter converter;
};

using namespace Lum::Internal;

namespace {

using Lum::ConversionStatus;

static_assert(LUM_NO_SUCH_ENCODING - LUM_OUTPUT_FULL ==
              static_cast<int>(ConversionStatus::kNoSuchEncoding) - static_cast<int>(ConversionStatus::kOutputFull));

lum_status StatusOf(ConversionStatus status) noexcept {
    constexpr int first = LUM_OUTPUT_FULL - static_cast<int>(ConversionStatus::kOutputFull);
    return status == ConversionStatus::kDone ? LUM_OK : static_cast<lum_status>(first + static_cast<int>(status));
}

/// Writes the result of `convert`, a whole text's conversion.
template <class Unit, class Convert>
lum_status Converted(const Buffer<Unit>& buffer, size_t* offset, const Convert& convert) noexcept {
    using Text = decltype(convert().text);
    Store(offset, std::size_t{0});
    return Answered<Text>(buffer, [&](Text& text) {
        auto result = convert();
        text = std::move(result.text);
        Store(offset, result.offset);
        return StatusOf(result.status);
    });
}

}  // namespace

lum_status lum_encoding_name(size_t index, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        static const std::vector<Lum::EncodingInfo> known = Lum::KnownEncodings();
        if (index >= known.size()) {
            return LUM_NOT_FOUND;
        }
        text = known[index].name;
        return LUM_OK;
    });
}

lum_status lum_convert(const char* text, size_t text_size, const char* from, const char* to, char* buffer,
                       size_t capacity, size_t* size, size_t* offset) {
    return Converted(Buffer<char>{buffer, capacity, size}, offset, [&] {
        return Lum::ConvertText(TextOf(text, text_size), std::string(TextOf(from)), std::string(TextOf(to)));
    });
}

lum_status lum_to_utf16(const char* text, size_t text_size, const char* from, uint16_t* buffer, size_t capacity,
                        size_t* size, size_t* offset) {
    return Converted(Buffer<std::uint16_t>{buffer, capacity, size}, offset,
                     [&] { return Lum::ConvertTextToUTF16(TextOf(text, text_size), std::string(TextOf(from))); });
}

lum_status lum_from_utf16(const uint16_t* text, size_t text_size, const char* to, char* buffer, size_t capacity,
                          size_t* size, size_t* offset) {
    return Converted(Buffer<char>{buffer, capacity, size}, offset, [&] {
        std::u16string_view units;
        if (text != nullptr) {
            const char16_t* const first = Lum::AsChar16(text);
            units =
                text_size == LUM_NUL_TERMINATED ? std::u16string_view(first) : std::u16string_view(first, text_size);
        }
        return Lum::ConvertTextFromUTF16(units, std::string(TextOf(to)));
    });
}

lum_status lum_converter_create(const char* from, const char* to, lum_converter** converter) {
    if (converter == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    *converter = nullptr;
    return Guarded([&] {
        Lum::StreamConverter made{std::string(TextOf(from)), std::string(TextOf(to))};
        const lum_status status = StatusOf(made.Convert({}, {}).status);
        if (status == LUM_NO_SUCH_ENCODING) {
            return status;
        }
        *converter = new lum_converter{std::move(made)};
        return LUM_OK;
    });
}

void lum_converter_free(lum_converter* converter) { delete converter; }

lum_status lum_converter_convert(lum_converter* converter, const char* input, size_t input_size, size_t* read,
                                 char* output, size_t capacity, size_t* written) {
    Store(read, size_t{0});
    Store(written, size_t{0});
    return Guarded([&] {
        if (converter == nullptr || read == nullptr || written == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        const auto result = converter->converter.Convert(TextOf(input, input_size),
                                                         std::span(output, output == nullptr ? 0 : capacity));
        *read = result.read;
        *written = result.written;
        return StatusOf(result.status);
    });
}

lum_status lum_converter_finish(lum_converter* converter, char* output, size_t capacity, size_t* written) {
    Store(written, size_t{0});
    return Guarded([&] {
        if (converter == nullptr || written == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        const auto result = converter->converter.Finish(std::span(output, output == nullptr ? 0 : capacity));
        *written = result.written;
        return StatusOf(result.status);
    });
}

lum_status lum_converter_clear(lum_converter* converter) {
    if (converter == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    converter->converter.Clear();
    return LUM_OK;
}
