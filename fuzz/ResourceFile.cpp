// Property: a file of any bytes is either opened or explained. Opening it takes at most four times its size of
// memory and 64 KB. After a resource is added and the file is written, reading it gives the same resources.
#include <algorithm>
#include <filesystem>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>
#include <Lum/StringResources.h>

#include "fuzz/Fuzz.h"
#include "tests/Resources/Files.h"

// Only clang's address sanitizer reports every allocation.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/allocator_interface.h>
#define LUM_COUNTS_ALLOCATIONS
#endif
#endif

namespace {

constexpr unsigned long kText = 0x54455854;  // 'TEXT'

#ifdef LUM_COUNTS_ALLOCATIONS
std::size_t live = 0, peak = 0;

void CountAllocation(const volatile void* /*block*/, std::size_t size) {
    live += size;
    peak = std::max(peak, live);
}
void CountFree(const volatile void* block) {
    const std::size_t size = __sanitizer_get_allocated_size(const_cast<const void*>(block));
    live -= std::min(live, size);
}

#endif

/// Opens the file, counting what that takes at once.
short OpenCounted(const std::filesystem::path& path, [[maybe_unused]] std::size_t size) {
#ifdef LUM_COUNTS_ALLOCATIONS
    static const int installed = __sanitizer_install_malloc_and_free_hooks(CountAllocation, CountFree);
    Require(installed != 0);
    const std::size_t before = peak = live;
    const short reference = Lum::Platform::OpenResourceFile(path, true);
    Require(peak - before <= 4 * size + 0x10000);
    return reference;
#else
    return Lum::Platform::OpenResourceFile(path, true);
#endif
}

void LoadNumbers() {
    gStrResTableInited = false;
    for (unsigned number = 0; number < 8; ++number) {
        CString text;
        Require(text.LoadString(number) || text.IsEmpty());
    }
}

bool AreSame(const Lum::Platform::ResourceEntry& a, const Lum::Platform::ResourceEntry& b) {
    return a.type == b.type && a.id == b.id && a.name == b.name && a.bytes == b.bytes;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files::Folder folder;
    const auto path = Files::Write(folder / "file", {reinterpret_cast<const char*>(data), size});
    const short reference = OpenCounted(path, size);
    Require((reference == -1) == !Lum::Platform::ExplainResourceFile(path).empty());
    if (reference != -1) {
        LoadNumbers();
        CString text;
        text.LoadString(kText, u"first", false);
        text.LoadString(kText, u"first", true);
        CString(u"changed").UnloadString(kText, u"added", false);
        const auto changed = Lum::Platform::ListResources(reference);
        if (Lum::Platform::UpdateResourceFile(reference)) {
            const short again = Lum::Platform::OpenResourceFile(path, false);
            const auto read = Lum::Platform::ListResources(again);
            Require(std::equal(changed.begin(), changed.end(), read.begin(), read.end(), AreSame));
            Lum::Platform::CloseResourceFile(again);
        }
        Lum::Platform::CloseResourceFile(reference);
        LoadNumbers();
    }
    return 0;
}
