// Whether an XML property list is one dictionary of strings.
#pragma once

#include <string>
#include <string_view>

namespace CoreFoundation {

/// Empty, or what is wrong, for a developer. What passes has no element but plist, dict and in it pairs of
/// key and string, in the right order and all closed, and declares no entities.
std::string CheckXmlList(std::string_view bytes);

}  // namespace CoreFoundation
