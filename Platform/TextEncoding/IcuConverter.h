// The converters whose tables are ICU's.
#pragma once

#include <memory>
#include <string_view>

#include "Platform/TextEncoding/Converter.h"

namespace TextConversion {

/// Converters between UTF-16 and the encoding that ICU has under `name`, or null if it has none.
std::unique_ptr<Converter> MakeIcuToUtf16(std::string_view name);
std::unique_ptr<Converter> MakeIcuFromUtf16(std::string_view name);

}  // namespace TextConversion
