// The resource files that are open, in the order of the search.
#pragma once

#include <filesystem>
#include <memory>
#include <unordered_map>
#include <vector>

#include "Platform/Resources/ResourceMap.h"
#include "Platform/Resources/StringLists.h"

namespace Resources {

struct OpenFile {
    short reference = 0;
    bool isWritable = false;
    std::filesystem::path path;  ///< of a writable one absolute and without links: a new file takes its place
    ResourceMap map;
    std::unordered_map<Handle, StringList> lists;  ///< those that strings were asked of
};

/// Newest first.
std::vector<std::unique_ptr<OpenFile>>& OpenFiles();
/// Null if none is open.
OpenFile* NewestFile();

}  // namespace Resources
