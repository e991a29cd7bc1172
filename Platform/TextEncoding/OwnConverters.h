// The converters that have code of their own: UTF-16 to and from UTF-8, UTF-16, Latin-1 and ASCII.
#pragma once

#include <memory>

#include "Platform/TextEncoding/Converter.h"

namespace TextConversion {

/// Null where neither encoding is UTF-16, or the other is none of these.
std::unique_ptr<Converter> MakeOwnConverter(TextEncoding from, TextEncoding to);

}  // namespace TextConversion
