// Finds resources along the search order and changes them.
#include "Platform/Resources/Resources.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>

#include "Platform/Resources/LayoutWriter.h"
#include "Platform/Resources/OpenFiles.h"

using Resources::OpenFile;
using Resources::Resource;
using Resources::ResourceMap;

namespace {

constexpr ResType kString = 0x53545220;      // 'STR '
constexpr ResType kStringList = 0x53545223;  // 'STR#'

OSErr lastError = 0;

std::string_view TextOf(ConstStr255Param name) {
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
        !Resources::HasRoomFor(map, type, name.size(), static_cast<std::size_t>(GetHandleSize(handle)))) {
        return addResFailed;
    }
    try {
        map.Add(handle, type, id, name);
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
    return 0;
}

OSErr Change(Handle handle) {
    for (const auto& file : Resources::OpenFiles()) {
        if (Resource* const resource = file->map.Find(handle)) {
            file->lists.erase(handle);
            resource->isChanged = resource->isChanged || file->isWritable;
            return file->isWritable ? 0 : opWrErr;
        }
    }
    return resNotFound;
}

}  // namespace

Handle GetResource(ResType type, ResID id) {
    for (const auto& file : Resources::OpenFiles()) {
        if (Resource* const resource = file->map.Find(type, id)) {
            return file->map.Load(*resource);
        }
    }
    return nullptr;
}

Handle Get1NamedResource(ResType type, ConstStr255Param name) {
    OpenFile* const file = Resources::NewestFile();
    Resource* const resource = file == nullptr || name == nullptr ? nullptr : file->map.Find(type, TextOf(name));
    return resource == nullptr ? nullptr : file->map.Load(*resource);
}

StringHandle GetString(ResID id) { return reinterpret_cast<StringHandle>(GetResource(kString, id)); }

void GetIndString(Str255 string, ResID list, short index) {
    std::string_view text;
    for (const auto& file : Resources::OpenFiles()) {
        if (Resource* const resource = file->map.Find(kStringList, list)) {
            if (char** const handle = file->map.Load(*resource)) {
                text = file->lists[handle].Find({*handle, static_cast<std::size_t>(GetHandleSize(handle))}, index);
            }
            break;
        }
    }
    string[0] = static_cast<unsigned char>(text.size());
    std::copy(text.begin(), text.end(), string + 1);
}

void AddResource(Handle handle, ResType type, ResID id, ConstStr255Param name) {
    lastError = Add(handle, type, id, TextOf(name));
}

void ChangedResource(Handle handle) { lastError = Change(handle); }

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

OSErr ResError() { return lastError; }
