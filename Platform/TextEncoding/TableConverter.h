// Encodings of one byte or two a character, by tables that are made of ICU's answers once for all converters.
#pragma once

#include <memory>
#include <string_view>

#include "Platform/TextEncoding/Converter.h"

namespace Lum::Internal::TextConversion {

/// Makes the converter that is used for what the tables do not hold.
using MakeIcuConverter = std::unique_ptr<Converter> (*)(std::string_view name);

/// Converters between UTF-16 and the encoding that ICU has under `name`, which must stay where it is: with
/// tables, or what `makeIcu` makes where the encoding keeps a state or is not of the kind.
std::unique_ptr<Converter> MakeTableToUtf16(std::string_view name, MakeIcuConverter makeIcu);
std::unique_ptr<Converter> MakeTableFromUtf16(std::string_view name, MakeIcuConverter makeIcu);

}  // namespace Lum::Internal::TextConversion
