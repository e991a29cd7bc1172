// Opens, writes back and closes resource files for the application.
#include "Platform/Resources/OpenFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "Platform/Resources/DiskFile.h"
#include "Platform/Resources/LayoutReader.h"
#include "Platform/Resources/LayoutWriter.h"

namespace Resources {

std::vector<std::unique_ptr<OpenFile>>& OpenFiles() {
    // Never destroyed, for static destructors may still load strings.
    static auto* const files = new std::vector<std::unique_ptr<OpenFile>>;
    return *files;
}

OpenFile* NewestFile() { return OpenFiles().empty() ? nullptr : OpenFiles().front().get(); }

namespace {

OpenFile* FileOf(short reference) {
    const auto found = std::find_if(OpenFiles().begin(), OpenFiles().end(),
                                    [reference](const auto& file) { return file->reference == reference; });
    return found == OpenFiles().end() ? nullptr : found->get();
}

/// A number that no open file has: the one after the last, so that old numbers stay unknown for long.
short NewReference() {
    static short last = 0;
    do {
        last = last == std::numeric_limits<short>::max() ? short{1} : static_cast<short>(last + 1);
    } while (FileOf(last) != nullptr);
    return last;
}

const char* Read(const std::filesystem::path& path, ResourceMap& map) {
    const InputFile file(path);
    if (!file.IsOpen()) {
        return "no file that can be opened";
    }
    const auto read = [&file](std::uint64_t offset, std::size_t size, char* bytes) {
        return file.Read(offset, size, bytes);
    };
    return ReadLayout(file.Size(), read, map);
}

/// Whether the file is there, or made with nothing in it, and may be changed.
bool PrepareForWriting(const std::filesystem::path& path) {
    const bool isOpenAlready = std::any_of(OpenFiles().begin(), OpenFiles().end(),
                                           [&](const auto& file) { return file->isWritable && file->path == path; });
    std::error_code error;
    if (isOpenAlready) {
        return false;  // each would write over what the other has written
    }
    if (std::filesystem::exists(path, error)) {
        return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    }
    return !error && ReplaceFile(path, *WriteLayout({}));
}

bool IsChanged(const ResourceMap& map) {
    return std::any_of(map.resources.begin(), map.resources.end(),
                       [](const Resource& resource) { return resource.isChanged; });
}

/// Writes the map and takes up where everything stands in the new file.
bool WriteBack(OpenFile& file) {
    const std::optional<std::string> bytes = WriteLayout(file.map);
    // What is written is read first, so that no file replaces a good one that could not be opened again.
    ResourceMap written;
    if (!bytes || ReadLayout(*bytes, written) != nullptr || written.resources.size() != file.map.resources.size() ||
        !ReplaceFile(file.path, *bytes)) {
        return false;
    }
    for (std::size_t i = 0; i < written.resources.size(); ++i) {
        written.resources[i].handle = file.map.resources[i].handle;
    }
    file.map = std::move(written);
    return true;
}

}  // namespace
}  // namespace Resources

using Resources::OpenFile;

namespace Lum::Platform {

short OpenResourceFile(const std::filesystem::path& path, bool writable) {
    std::error_code error;
    auto file = std::make_unique<OpenFile>();
    file->isWritable = writable;
    // Only what will be replaced needs a path that holds when folders and links have changed.
    file->path = writable ? std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error) : path;
    if (error || (writable && !Resources::PrepareForWriting(file->path)) ||
        Resources::Read(file->path, file->map) != nullptr) {
        return -1;
    }
    const short reference = Resources::NewReference();
    file->reference = reference;
    Resources::OpenFiles().insert(Resources::OpenFiles().begin(), std::move(file));
    return reference;
}

bool UpdateResourceFile(short reference) {
    OpenFile* const file = Resources::FileOf(reference);
    return file != nullptr && file->isWritable && (!Resources::IsChanged(file->map) || Resources::WriteBack(*file));
}

bool CloseResourceFile(short reference) {
    OpenFile* const file = Resources::FileOf(reference);
    if (file == nullptr || (file->isWritable && !UpdateResourceFile(reference))) {
        return false;
    }
    file->map.ReleaseHandles();
    std::erase_if(Resources::OpenFiles(), [file](const auto& open) { return open.get() == file; });
    return true;
}

std::string ExplainResourceFile(const std::filesystem::path& path) {
    Resources::ResourceMap map;
    const char* const problem = Resources::Read(path, map);
    return problem == nullptr ? std::string() : problem;
}

std::vector<ResourceEntry> ListResources(short reference) {
    std::vector<ResourceEntry> entries;
    if (OpenFile* const file = Resources::FileOf(reference)) {
        entries.reserve(file->map.resources.size());
        for (const Resources::Resource& resource : file->map.resources) {
            entries.push_back({resource.type, resource.id, std::string(file->map.NameOf(resource)),
                               file->map.BytesToWrite(resource)});
        }
    }
    return entries;
}

}  // namespace Lum::Platform
