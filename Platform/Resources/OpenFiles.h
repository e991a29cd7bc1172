// The resource files that are open, in the order of the search.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Resources/ResourceMap.h"

namespace Resources {

struct OpenFile {
    short reference = 0;
    bool isWritable = false;
    std::filesystem::path path;  ///< absolute and without links, for a new file takes its place
    ResourceMap map;
};

/// Newest first.
std::vector<std::unique_ptr<OpenFile>>& OpenFiles();
/// Null if none is open.
OpenFile* NewestFile();

}  // namespace Resources
