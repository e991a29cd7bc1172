// Property: a file of any bytes is opened or explained, never both; opening it takes at most four times its
// size of memory and 64 KB; what it holds with one resource more is what is read when it has been written.
#include <sanitizer/allocator_interface.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>
#include <Lum/StringResources.h>

#include "fuzz/Fuzz.h"
#include "fuzz/Seeds.h"
#include "tests/Resources/Files.h"

namespace {

constexpr unsigned long kText = 0x54455854;  // 'TEXT'

std::size_t live = 0, peak = 0;

void CountAllocation(const volatile void* /*block*/, std::size_t size) {
    live += size;
    peak = std::max(peak, live);
}
void CountFree(const volatile void* block) {
    const std::size_t size = __sanitizer_get_allocated_size(const_cast<const void*>(block));
    live -= std::min(live, size);
}

/// Opens the file, counting what that takes at once.
short OpenCounted(const std::filesystem::path& path, std::size_t size) {
    static const int installed = __sanitizer_install_malloc_and_free_hooks(CountAllocation, CountFree);
    Require(installed != 0);
    const std::size_t before = peak = live;
    const short reference = Lum::Platform::OpenResourceFile(path, true);
    Require(peak - before <= 4 * size + 0x10000);
    return reference;
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

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned number) {
    using Files::List;
    using Files::Number;
    using Files::Pascal;
    static const std::vector<std::string> seeds = {
        Files::Fork({{"TEXT", 1, "one", "First"}, {"TEXT", 2, ""}}, ""),
        Files::Fork({{"STR ", 3, Pascal("three")},
                     {"STR#", 200, List({"a", "", "c"})},
                     {"STRm", 0, Number(0x0001000000020002, 8)}}),
        Files::Fork({{"utxt", -1, "\xD8", "x"}, {"utxt", 7, "abcd", "X", 0x20}, {"TEXT", 7, "7", "added"}}, "res"),
    };
    return MutateOrSeed(seeds, data, size, mostSize, number);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path path =
        (std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path()) /
        std::filesystem::path("lum-fuzz-" + std::to_string(getpid()));
    std::ofstream(path, std::ios::binary) << std::string_view(reinterpret_cast<const char*>(data), size);
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
    std::filesystem::remove(path);
    return 0;
}
