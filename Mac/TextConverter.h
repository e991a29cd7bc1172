// One converter of the host's text encoding converter service, from one encoding to another, and what converts
// without one. Only this module reads the statuses of that service.
#pragma once

#include <span>
#include <string_view>

#include <Lum/Transcoder.h>

#include "Platform/TextEncoding/OwnedConverter.h"

namespace Lum::Internal::Mac {

/// Used by one thread at a time. Where the service runs out of memory, std::bad_alloc is thrown; the converter
/// must then be cleared before it is used again.
class TextConverter {
public:
    TextConverter() noexcept = default;
    /// Empty where the host has no such converter.
    TextConverter(TextEncoding from, TextEncoding to) : m_Converter(from, to) {}

    explicit operator bool() const noexcept { return static_cast<bool>(m_Converter); }

    // The converter must not be empty.

    /// Converts until the input ends or an element cannot be converted. Keeps the shift state of both encodings
    /// between calls. A failure of the service that has no status of its own is kMalformed.
    ConversionResult Convert(std::string_view input, std::span<char> output);
    /// Writes what returns the target encoding to its initial state. Reads nothing.
    ConversionResult Flush(std::span<char> output);
    /// Returns the converter to the state of a new one, also after a failure.
    void Clear() noexcept { m_Converter.Clear(); }

private:
    TextConversion::OwnedConverter m_Converter;
};

/// Between UTF-8 and UTF-16 no converter is needed, since neither has a state. The results are those of a
/// converter's Convert, after which there is nothing to flush. From any thread at any time.
ConversionResult UTF8ToUTF16(std::string_view input, std::span<char> output) noexcept;
ConversionResult UTF16ToUTF8(std::string_view input, std::span<char> output) noexcept;

}  // namespace Lum::Internal::Mac
