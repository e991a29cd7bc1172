// Makes a string longer without clearing the units that are added, for who writes all of them at once.
#pragma once

#include <cstddef>
#include <string>

namespace Lum::Internal {

/// As resize(size), but units that are added have any value. The caller writes them or takes them away again
/// before anybody else sees the string. Without the library feature that this needs, they are 0.
void ResizeUncleared(std::string& text, std::size_t size);
void ResizeUncleared(std::u16string& text, std::size_t size);

}  // namespace Lum::Internal
