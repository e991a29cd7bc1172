// Finds resources in the open files, newest first, and changes them.
#include "Platform/Resources/Resources.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include "Platform/Resources/Layout.h"
#include "Platform/Resources/OpenFiles.h"

using namespace Lum::Internal;

using Resources::OpenFile;
using Resources::Resource;
using Resources::ResourceMap;

namespace {

constexpr ResType kString = 0x53545220;      // 'STR '
constexpr ResType kStringList = 0x53545223;  // 'STR#'

OSErr s_lastError = noErr;

std::string_view NameOf(ConstStr255Param name) {
    return name == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(name) + 1, name[0]);
}

OSErr Add(Handle handle, ResType type, ResID id, std::string_view name) {
    OpenFile* const file = Resources::NewestFile();
    if (file == nullptr) {
        return resFNotFound;
    }
    ResourceMap& map = file->map;
    if (!file->isWritable) {
        return opWrErr;
    }
    if (Resources::OwnerOf(handle) != Resources::HandleOwner::kCaller ||
        !Resources::CanAdd(map, type, name.size(), static_cast<std::size_t>(GetHandleSize(handle)))) {
        return addResFailed;
    }
    try {
        map.Add(handle, type, id, name);
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
    return noErr;
}

OSErr Change(Handle handle) {
    for (const auto& file : Resources::OpenFiles()) {
        if (Resource* const resource = file->map.Find(handle)) {
            file->lists.erase(handle);
            resource->isChanged = resource->isChanged || file->isWritable;
            return file->isWritable ? OSErr{noErr} : opWrErr;
        }
    }
    return resNotFound;
}

/// The handle of a resource that was found in `file`; null if none was found or it cannot be loaded.
Handle Load(const OpenFile* file, Resource* resource) {
    Handle handle = resource == nullptr ? nullptr : file->map.Load(*resource);
    s_lastError = handle != nullptr ? OSErr{noErr} : resource == nullptr ? resNotFound : OSErr{memFullErr};
    return handle;
}

/// The newest file that has a resource, and the resource; both null if no file has it.
std::pair<OpenFile*, Resource*> Find(ResType type, ResID id) {
    for (const auto& file : Resources::OpenFiles()) {
        if (Resource* const resource = file->map.Find(type, id)) {
            return {file.get(), resource};
        }
    }
    return {};
}

}  // namespace

Handle GetResource(ResType type, ResID id) {
    const auto [file, resource] = Find(type, id);
    return Load(file, resource);
}

Handle Get1NamedResource(ResType type, ConstStr255Param name) {
    OpenFile* const file = Resources::NewestFile();
    return Load(file, file == nullptr || name == nullptr ? nullptr : file->map.Find(type, NameOf(name)));
}

StringHandle GetString(ResID id) { return reinterpret_cast<StringHandle>(GetResource(kString, id)); }

void GetIndString(Str255 string, ResID list, short index) {
    std::string_view text;
    const auto [file, resource] = Find(kStringList, list);
    if (char** const handle = Load(file, resource)) {
        text = file->lists[handle].Find({*handle, static_cast<std::size_t>(GetHandleSize(handle))}, index);
    }
    string[0] = static_cast<unsigned char>(text.size());
    std::copy(text.begin(), text.end(), string + 1);
}

void AddResource(Handle handle, ResType type, ResID id, ConstStr255Param name) {
    s_lastError = Add(handle, type, id, NameOf(name));
}

void ChangedResource(Handle handle) { s_lastError = Change(handle); }

ResID UniqueID(ResType type) {
    const auto isTaken = [type](ResID id) {
        return std::any_of(Resources::OpenFiles().begin(), Resources::OpenFiles().end(),
                           [&](const auto& file) { return file->map.Find(type, id) != nullptr; });
    };
    constexpr ResID kFirst = 128;
    for (ResID id = kFirst;; ++id) {
        if (!isTaken(id)) {
            return id;
        }
        if (id == std::numeric_limits<ResID>::max()) {
            return 0;
        }
    }
}

OSErr ResError() { return s_lastError; }
