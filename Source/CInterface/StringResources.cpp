// Strings by number, and the host's set-up, for C.
#include <filesystem>
#include <limits>
#include <string>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>
#include <Lum/StringResources.h>
#include <Lum/Transcoder.h>

#include "Source/CInterface/Call.h"

using namespace Lum::Internal;
namespace Platform = Lum::Platform;

namespace {

/// Calls `body`, which answers nothing, and looks strings up afresh from then on.
template <class Body>
lum_status SetUp(const Body& body) noexcept {
    return Guarded([&] {
        body();
        gStrResTableInited = false;
        return LUM_OK;
    });
}

std::filesystem::path PathOf(const char* path) { return TextOf(path); }

}  // namespace

lum_status lum_resource_open(const char* path, int* reference) {
    if (reference == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    *reference = -1;
    const lum_status status = SetUp([&] { *reference = Platform::OpenResourceFile(PathOf(path), false); });
    return status == LUM_OK && *reference == -1 ? LUM_NOT_OPENED : status;
}

lum_status lum_resource_close(int reference) {
    bool isClosed = false;
    const lum_status status = SetUp([&] {
        using Limits = std::numeric_limits<short>;
        const bool isNumber = reference > 0 && reference <= Limits::max();
        isClosed = isNumber && Platform::CloseResourceFile(static_cast<short>(reference));
    });
    return status == LUM_OK && !isClosed ? LUM_NOT_FOUND : status;
}

lum_status lum_resource_explain(const char* path, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        text = Platform::ExplainResourceFile(PathOf(path));
        return LUM_OK;
    });
}

lum_status lum_string_set_folder(const char* path) {
    return SetUp([&] { Platform::SetMainBundle(PathOf(path)); });
}

lum_status lum_string_add_table(const char* name) {
    return SetUp([&] { CString::AddStringTableForSearch(name == nullptr ? "" : name); });
}

lum_status lum_string_load(unsigned int number, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        CString string;
        const bool isThere = string.LoadString(number);
        text = string.ToUTF8();
        // Gives the buffer back at its end: a caller here has no way to do so.
        string.LockBuffer();
        return isThere ? LUM_OK : LUM_NOT_FOUND;
    });
}

lum_status lum_set_locale(const char* name) {
    return SetUp([&] { Platform::SetLocale(std::string(TextOf(name))); });
}

lum_status lum_set_application_encoding(const char* name) {
    constexpr Lum::TextEncoding unknown = 0xFFFF;
    Lum::TextEncoding encoding = unknown;
    const lum_status status = SetUp([&] {
        encoding = Lum::EncodingToCharSetID(std::string(TextOf(name)));
        if (encoding != unknown) {
            Platform::SetApplicationTextEncoding(encoding);
        }
    });
    return status == LUM_OK && encoding == unknown ? LUM_NO_SUCH_ENCODING : status;
}

lum_status lum_set_startup_volume(const char* name) {
    return SetUp([&] { Platform::SetStartupVolumeName(std::string(TextOf(name))); });
}
