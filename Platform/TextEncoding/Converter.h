// What every converter of this folder does, and which parts of the folder make them.
// TextEncodingConverter.h says what each operation means.
#pragma once

#include <memory>
#include <string_view>

#include "Platform/TextEncoding/OwnedConverter.h"

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

}  // namespace Lum::Internal::TextConversion
