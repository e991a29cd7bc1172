// What every converter of this folder does, which parts of the folder make them, and their owner.
// TextEncodingConverter.h says what each operation means.
#pragma once

#include <memory>
#include <string_view>

#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Source/Utf8/Cursor.h"

namespace Lum::Internal::TextConversion {

/// The result of one call: its status, and how many bytes it read and wrote.
struct Step {
    OSStatus status = noErr;
    ByteCount read = 0;
    ByteCount written = 0;
};

}  // namespace Lum::Internal::TextConversion

struct OpaqueTECObjectRef {
    OpaqueTECObjectRef() = default;
    OpaqueTECObjectRef(const OpaqueTECObjectRef&) = delete;
    OpaqueTECObjectRef& operator=(const OpaqueTECObjectRef&) = delete;
    virtual ~OpaqueTECObjectRef() = default;

    using Input = Lum::Internal::TextConversion::Input;
    using Output = Lum::Internal::TextConversion::Output;
    using Step = Lum::Internal::TextConversion::Step;
    virtual Step Convert(Input input, Output output) = 0;
    virtual Step Flush(Output output) = 0;
    virtual void Clear() = 0;
};

namespace Lum::Internal::TextConversion {

using Converter = OpaqueTECObjectRef;

/// A converter with code of its own: between UTF-16 and UTF-8, UTF-16, Latin-1 or ASCII. Null for any other
/// pair of encodings.
std::unique_ptr<Converter> MakeOwnConverter(TextEncoding from, TextEncoding to);

/// Converters between UTF-16 and the encoding that ICU has under `name`, or null if it has none.
std::unique_ptr<Converter> MakeIcuToUtf16(std::string_view name);
std::unique_ptr<Converter> MakeIcuFromUtf16(std::string_view name);

/// The converter between any two encodings, as TECCreateConverter finds it.
std::unique_ptr<Converter> MakeConverter(TextEncoding from, TextEncoding to);

/// Such a converter for code beside the services. Where there is none, it answers kTECNoConversionPathErr.
class OwnedConverter {
public:
    OwnedConverter(TextEncoding from, TextEncoding to) : m_Converter(MakeConverter(from, to)) {}

    explicit operator bool() const noexcept { return m_Converter != nullptr; }
    [[nodiscard]] Step Convert(Input input, Output output) const {
        return m_Converter != nullptr ? m_Converter->Convert(input, output) : Step{kTECNoConversionPathErr, 0, 0};
    }
    [[nodiscard]] Step Flush(Output output) const {
        return m_Converter != nullptr ? m_Converter->Flush(output) : Step{kTECNoConversionPathErr, 0, 0};
    }
    /// Not for an empty one.
    void Clear() const { m_Converter->Clear(); }

private:
    std::unique_ptr<Converter> m_Converter;
};

}  // namespace Lum::Internal::TextConversion
