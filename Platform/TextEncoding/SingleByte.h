// Encodings of one byte for each character, to UTF-16: through a table that ICU fills.
#pragma once

#include <memory>

#include "Platform/TextEncoding/IcuDirections.h"

namespace TextConversion {

/// Null where some byte is not just one unit.
std::unique_ptr<Converter> MakeSingleByteToUtf16(UConverter* converter);

}  // namespace TextConversion
