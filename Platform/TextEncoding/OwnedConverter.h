// The one owner of a converter of the text encoding services. It disposes of the converter, and turns the
// status for want of memory into std::bad_alloc. All other statuses are the caller's to read.
#pragma once

#include <new>
#include <span>
#include <utility>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Lum::Internal::TextConversion {

using Input = std::span<const unsigned char>;
using Output = std::span<unsigned char>;

/// The result of one call: its status, and how many bytes it read and wrote.
struct Step {
    OSStatus status = noErr;
    ByteCount read = 0;
    ByteCount written = 0;
};

class OwnedConverter {
public:
    /// Empty where there is no such converter.
    OwnedConverter(TextEncoding from, TextEncoding to) { Checked(TECCreateConverter(&m_Converter, from, to)); }
    OwnedConverter() noexcept = default;
    OwnedConverter(OwnedConverter&& other) noexcept : m_Converter(std::exchange(other.m_Converter, nullptr)) {}
    OwnedConverter& operator=(OwnedConverter&& other) noexcept {
        std::swap(m_Converter, other.m_Converter);
        return *this;
    }
    ~OwnedConverter() {
        if (m_Converter != nullptr) {
            TECDisposeConverter(m_Converter);
        }
    }

    explicit operator bool() const noexcept { return m_Converter != nullptr; }

    // An empty one converts nothing and answers kTECNoConversionPathErr.

    [[nodiscard]] Step Convert(Input input, Output output) const {
        if (m_Converter == nullptr) {
            return {kTECNoConversionPathErr, 0, 0};
        }
        // Not members of a Step: a Step is copied with a load of 16 bytes, which waits for the two stores of 8.
        ByteCount read = 0;
        ByteCount written = 0;
        const OSStatus status =
            TECConvertText(m_Converter, input.data(), input.size(), &read, output.data(), output.size(), &written);
        return {Checked(status), read, written};
    }
    [[nodiscard]] Step Flush(Output output) const {
        if (m_Converter == nullptr) {
            return {kTECNoConversionPathErr, 0, 0};
        }
        ByteCount written = 0;
        const OSStatus status = TECFlushText(m_Converter, output.data(), output.size(), &written);
        return {Checked(status), 0, written};
    }
    /// Not for an empty one.
    void Clear() const noexcept { TECClearConverterContextInfo(m_Converter); }

private:
    static OSStatus Checked(OSStatus status) {
        if (status == memFullErr) {
            throw std::bad_alloc();
        }
        return status;
    }

    TECObjectRef m_Converter = nullptr;
};

}  // namespace Lum::Internal::TextConversion
