// Property: a file of any bytes is either opened or explained. Opening it takes at most four times its size of
// memory and 64 KB. It has the resources that a second, plain reader finds. After a resource is added and the file is
// written, reading it gives the same resources.
#include <algorithm>
#include <filesystem>
#include <string_view>
#include <tuple>
#include <vector>

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

/// Reads a file that holds together: throws where it does not.
std::vector<Lum::Platform::ResourceEntry> ReadPlainly(std::string_view file) {
    const auto number = [file](std::size_t at, std::size_t size) {
        std::size_t value = 0;
        for (const std::size_t end = at + size; at < end; ++at) {
            value = value << 8 | static_cast<unsigned char>(file.at(at));
        }
        return value;
    };
    const auto count = [&](std::size_t at) { return (number(at, 2) + 1) & 0xFFFF; };
    const std::size_t data = number(0, 4), map = number(4, 4);
    const std::size_t types = map + number(map + 24, 2), names = map + number(map + 26, 2);
    std::vector<Lum::Platform::ResourceEntry> all;
    for (std::size_t i = 0; i < count(types); ++i) {
        const std::size_t type = types + 2 + 8 * i;
        for (std::size_t j = 0; j < count(type + 4); ++j) {
            const std::size_t reference = types + number(type + 6, 2) + 12 * j;
            const std::size_t bytes = data + number(reference + 5, 3), name = names + number(reference + 2, 2);
            const std::size_t nameSize = name == names + 0xFFFF ? 0 : number(name, 1);
            all.push_back({static_cast<std::uint32_t>(number(type, 4)), static_cast<short>(number(reference, 2)),
                           std::string(file.substr(nameSize == 0 ? 0 : name + 1, nameSize)),
                           std::string(file.substr(bytes + 4, number(bytes, 4)))});
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](auto& a, auto& b) { return std::tie(a.type, a.id) < std::tie(b.type, b.id); });
    return all;
}

bool AreSame(const Lum::Platform::ResourceEntry& a, const Lum::Platform::ResourceEntry& b) {
    return a.type == b.type && a.id == b.id && a.name == b.name && a.bytes == b.bytes;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files::Folder folder;
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    const auto path = Files::Write(folder / "file", file);
    const short reference = OpenCounted(path, size);
    Require((reference == -1) == !Lum::Platform::ExplainResourceFile(path).empty());
    if (reference != -1) {
        const auto listed = Lum::Platform::ListResources(reference), plain = ReadPlainly(file);
        Require(std::equal(listed.begin(), listed.end(), plain.begin(), plain.end(), AreSame));
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
