// Lengths of results, added in a width that holds every sum.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace Lum::Internal {

/// Reserves capacity for `size` bytes. Throws std::bad_alloc for a size that no string can hold.
inline void ReserveFor(std::string& text, std::uint64_t size) {
    if (size > text.max_size()) {
        throw std::bad_alloc();
    }
    text.reserve(static_cast<std::size_t>(size));
}

}  // namespace Lum::Internal
