// One converter of the host's text encoding converter service, from one encoding to another. Only this module
// reads the statuses of that service.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include <Lum/Transcoder.h>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Lum::Internal::Mac {

/// Used by one thread at a time. Where the service runs out of memory, std::bad_alloc is thrown; the converter
/// must then be cleared before it is used again.
class TextConverter {
public:
    TextConverter() noexcept = default;
    /// Empty where the host has no such converter.
    TextConverter(TextEncoding from, TextEncoding to);

    explicit operator bool() const noexcept { return m_Converter != nullptr; }

    // The converter must not be empty.

    /// Converts until the input ends or an element cannot be converted. Keeps the shift state of both encodings
    /// between calls. A failure of the service that has no status of its own is kMalformed.
    ConversionResult Convert(std::string_view input, std::span<char> output);
    /// Writes what returns the target encoding to its initial state. Reads nothing.
    ConversionResult Flush(std::span<char> output);
    /// Returns the converter to the state of a new one, also after a failure.
    void Clear() noexcept { TECClearConverterContextInfo(m_Converter.get()); }

private:
    struct Disposer {
        void operator()(TECObjectRef converter) const noexcept { TECDisposeConverter(converter); }
    };

    std::unique_ptr<OpaqueTECObjectRef, Disposer> m_Converter;
};

}  // namespace Lum::Internal::Mac
