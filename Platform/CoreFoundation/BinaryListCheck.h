// Whether a binary property list is one dictionary of strings.
#pragma once

#include <string_view>

namespace CoreFoundation {

/// Null, or what is wrong, for a developer. What passes has everything it refers to inside the file and
/// unfolds to no more than a small multiple of it.
const char* CheckBinaryList(std::string_view bytes);

}  // namespace CoreFoundation
