// Compiled for a later standard than all other files (cmake/Library.cmake), which has the operation.
#include "Source/Transcoder/ResizeUncleared.h"

namespace Lum::Internal {
namespace {

template <class Text>
void Resize(Text& text, std::size_t size) {
#ifdef __cpp_lib_string_resize_and_overwrite
    // libstdc++ 12 passes the capacity to the operation where it should pass the size.
    text.resize_and_overwrite(size, [size](auto* /*units*/, std::size_t /*most*/) { return size; });
#else
    text.resize(size);
#endif
}

}  // namespace

void ResizeUncleared(std::string& text, std::size_t size) { Resize(text, size); }
void ResizeUncleared(std::u16string& text, std::size_t size) { Resize(text, size); }

}  // namespace Lum::Internal
