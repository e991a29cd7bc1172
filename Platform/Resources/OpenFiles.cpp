// Opens, writes back and closes resource files for the application.
#include "Platform/Resources/OpenFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "Platform/Host/DiskFile.h"
#include "Platform/Resources/Layout.h"

using namespace Lum::Internal;

namespace Lum::Internal::Resources {

using Host::FolderOf;
using Host::InFolder;
using Host::InputFile;
using Host::RealPath;
using Host::ReplaceFile;

std::vector<std::unique_ptr<OpenFile>>& OpenFiles() {
    // Never destroyed, because static destructors may still load strings.
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

/// A number that no open file has. It follows the last one, so that the number of a closed file is not soon
/// used again.
short NewReference() {
    static short last = 0;
    do {
        last = last == std::numeric_limits<short>::max() ? short{1} : static_cast<short>(last + 1);
    } while (FileOf(last) != nullptr);
    return last;
}

const char* Read(const std::string& path, ResourceMap& map) {
    const InputFile file(path);
    if (!file.IsOpen()) {
        return "no file that can be opened";
    }
    const auto read = [&file](std::uint64_t offset, std::size_t size, char* bytes) {
        return file.Read(offset, size, bytes);
    };
    return ReadLayout(file.Size(), read, map);
}

/// Reads a file that is to be written, and makes its path absolute. If the file does not exist, `fresh` gets the
/// bytes to make it with.
bool ReadForWriting(OpenFile& file, std::string& fresh) {
    if (auto there = RealPath(file.path)) {
        file.path = std::move(*there);
        // If one file were open twice, each would write over the changes of the other.
        const bool isOpenAlready = std::any_of(OpenFiles().begin(), OpenFiles().end(), [&](const auto& other) {
            return other->isWritable && other->path == file.path;
        });
        return !isOpenAlready && faccessat(AT_FDCWD, file.path.c_str(), W_OK, AT_EACCESS) == 0 &&
               Read(file.path, file.map) == nullptr;
    }
    const auto folder = RealPath(FolderOf(file.path));
    if (!folder || InputFile(file.path).IsThere()) {
        return false;
    }
    file.path = InFolder(*folder, std::string_view(file.path).substr(file.path.rfind('/') + 1));
    fresh = *WriteLayout({});
    return ReadLayout(fresh, file.map) == nullptr;
}

bool IsChanged(const ResourceMap& map) {
    return std::any_of(map.resources.begin(), map.resources.end(),
                       [](const Resource& resource) { return resource.isChanged; });
}

/// Writes the map to the file, and replaces it by what is then in the file.
bool WriteBack(OpenFile& file) {
    const std::optional<std::string> bytes = WriteLayout(file.map);
    // The new bytes are first read back, so that a file is never replaced by one that cannot be opened.
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
}  // namespace Lum::Internal::Resources

using Resources::OpenFile;

namespace Lum::Platform {

short OpenResourceFile(const std::filesystem::path& path, bool writable) {
    auto file = std::make_unique<OpenFile>();
    file->isWritable = writable;
    file->path = path.native();
    std::string fresh;
    // Only a file that will be replaced needs a path that is valid even if the current folder changes.
    if (writable ? !Resources::ReadForWriting(*file, fresh) : Resources::Read(file->path, file->map) != nullptr) {
        return -1;
    }
    // The file is made last, when nothing else can fail.
    Resources::OpenFiles().reserve(Resources::OpenFiles().size() + 1);
    if (!fresh.empty() && !Host::ReplaceFile(file->path, fresh)) {
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
    const char* const problem = Resources::Read(path.native(), map);
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
