// What every converter does. TextEncodingConverter.h says what each operation means.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace TextConversion {

using Input = std::span<const unsigned char>;
using Output = std::span<unsigned char>;

struct Progress {
    OSStatus status;
    std::size_t read;
    std::size_t written;
};

/// Converts without memory of earlier calls.
using ConvertFunction = Progress (*)(Input input, Output output) noexcept;

}  // namespace TextConversion

struct OpaqueTECObjectRef {
    OpaqueTECObjectRef() = default;
    OpaqueTECObjectRef(const OpaqueTECObjectRef&) = delete;
    OpaqueTECObjectRef& operator=(const OpaqueTECObjectRef&) = delete;
    virtual ~OpaqueTECObjectRef() = default;

    virtual TextConversion::Progress Convert(TextConversion::Input input, TextConversion::Output output) = 0;
    virtual TextConversion::Progress Flush(TextConversion::Output output) = 0;
    virtual void Clear() = 0;
};

namespace TextConversion {

using Converter = OpaqueTECObjectRef;

}  // namespace TextConversion
