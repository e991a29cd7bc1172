// The open resource files, in the order in which they are searched, and the string lists in them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Platform/Resources/ResourceMap.h"

namespace Lum::Internal::Resources {

/// A list of strings, which is a count of 16 bits and then Pascal strings. The offsets of some of its strings
/// are kept, so that a look-up need not start at the first string.
class StringList {
public:
    /// The string with a number from 1 up in a list with these bytes; empty if there is none, or if the bytes
    /// end inside it. The offsets are found again if the block or its size is another than in the last call.
    /// Whoever writes into the block has to drop this object.
    std::string_view Find(std::string_view bytes, short index);

private:
    void FindOffsets(std::string_view bytes);

    const char* m_Block = nullptr;
    std::size_t m_Size = 0;
    std::vector<std::uint32_t> m_Offsets;
};

struct OpenFile {
    short reference = 0;
    bool isWritable = false;
    std::string path;  ///< if writable: absolute and without links, because a new file will replace it
    ResourceMap map;
    std::unordered_map<Handle, StringList> lists;  ///< those that strings were looked up in
};

/// Newest first.
std::vector<std::unique_ptr<OpenFile>>& OpenFiles();
/// Null if none is open.
OpenFile* NewestFile();

}  // namespace Lum::Internal::Resources
