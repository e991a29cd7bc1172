// Strings of a string-list resource: a count of 16 bits, and Pascal strings one behind the other.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Resources {

/// One list, with the places of some of its strings, so that a look-up need not start at the first one.
class StringList {
public:
    /// The string of a number from 1 up in a list with these bytes; empty if there is none, or the bytes
    /// end inside it. The places are found anew if the block or its size is not the one from before; who
    /// writes into the block has to forget the list.
    std::string_view Find(std::string_view bytes, short index);

private:
    void FindPlaces(std::string_view bytes);

    const char* m_Block = nullptr;
    std::size_t m_Size = 0;
    std::vector<std::uint32_t> m_Places;
};

}  // namespace Resources
