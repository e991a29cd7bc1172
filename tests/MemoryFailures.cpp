// Fails each allocation of an operation in turn, on the level of malloc, which ICU, libplist and the C library
// use: the operation then gives what it gives otherwise or throws std::bad_alloc, the next attempt works,
// nothing is leaked, and locale and open files are as before.
//
// Every attempt is a process of its own, so that whatever a first use builds is built in each.
#include <locale.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>

#include <Lum/Lum.h>
#include <Lum/ResourceFile.h>

#include "tests/Resources/Files.h"

namespace {

enum class Mode { kNone, kOne, kAllFrom };

constinit Mode s_mode = Mode::kNone;
constinit std::size_t s_left = 0;
constinit bool s_hasFailed = false;
constinit long s_blocks = 0;

bool MayAllocate() {
    if (s_mode == Mode::kNone || (s_mode == Mode::kOne && s_hasFailed) || (s_left > 1 && s_left-- != 0)) {
        return true;
    }
    s_hasFailed = true;
    return false;
}

void* Counted(void* block) {
    s_blocks += block != nullptr ? 1 : 0;
    return block;
}

}  // namespace

// NOLINTBEGIN: the C library's names
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) { return MayAllocate() ? Counted(__libc_malloc(size)) : nullptr; }
void* calloc(std::size_t count, std::size_t size) {
    return MayAllocate() ? Counted(__libc_calloc(count, size)) : nullptr;
}
void* realloc(void* block, std::size_t size) {
    if (!MayAllocate()) {
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    return block == nullptr ? Counted(moved) : moved;
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return MayAllocate() ? Counted(__libc_memalign(alignment, size)) : nullptr;
}
void free(void* block) {
    s_blocks -= block != nullptr ? 1 : 0;
    __libc_free(block);
}
}
// NOLINTEND

namespace {

using namespace Lum::Platform;
using Lum::Transcoder;
using namespace std::string_literals;

constexpr unsigned long kText = 0x54455854;  // 'TEXT'

const Files::Folder folder;
short file = -1;
locale_t locale{};

std::string Loaded(unsigned number) {
    CString text;
    text.LoadString(number);
    return text.ToUTF8();
}

std::string Stored(const char16_t* name, const char16_t* value) {
    CString text(value);
    text.UnloadString(kText, CString(name), false);
    text = u"";
    text.LoadString(kText, CString(name), false);
    std::string result = text.ToUTF8();
    for (const ResourceEntry& entry : ListResources(file)) {
        result += entry.type == kText ? ' ' + entry.name + '=' + entry.bytes : std::string();
    }
    return result;
}

std::string Formatted(const char16_t* format) {
    CString text;
    text.Format(format, 1.5L);
    return text.Left(4).ToUTF8() + std::to_string(text.GetLength());
}

struct Operation {
    const char* name;
    std::string (*run)();
    std::string expected;
};

const Operation kOperations[] = {
    {"from Shift-JIS", [] { return Transcoder::EncodingToUTF8("\x83\x5C", "shift_jis"); }, "ソ"},
    {"from KOI8-R", [] { return Transcoder::EncodingToUTF8("\xC1", "koi8-r"); }, "а"},
    {"from ISO-2022-JP", [] { return Transcoder::EncodingToUTF8("\x1B$B$\"\x1B(B", "iso-2022-jp"); }, "あ"},
    {"from HZ", [] { return Transcoder::EncodingToUTF8("a~{HU~}", "hz"); }, "a日"},
    {"from UTF-7", [] { return Transcoder::EncodingToUTF8("a+ZeU", "utf-7"); }, "a日"},
    {"a whole text", [] { return Lum::ConvertText("é\xFF", "utf-8", "iso-8859-1").text; }, "\xE9"},
    {"to GB 18030", [] { return Transcoder::UTF8ToEncoding("日", "gb18030"); }, "\xC8\xD5"},
    {"to ISO-2022-KR", [] { return Transcoder::UTF8ToEncoding("日", "iso-2022-kr"); }, "\x1B$)C\x0Elm\x0F"},
    {"the default encoding", [] { return Transcoder::DefaultChannelEncoding(); }, "shift_jis"},
    {"the platform's encoding", [] { return Transcoder::PlatformEncoding(); }, "x-mac-japanese"},
    {"a URI's escapes",
     [] {
         std::string text = "%83%5C";
         return (Lum::URI::NormalizeEncoding(text, "shift_jis") ? "" : "not ") + text;
     },
     "ソ"},
    {"a string by the index", [] { return Loaded(7); }, "bb"},
    {"a single string", [] { return Loaded(9); }, "nine"},
    {"a table's string", [] { return Loaded(10); }, "ten"},
    {"one more table", [] { return (CString::AddStringTableForSearch("More"), std::string()); }, ""},
    {"a number that nobody knows", [] { return Loaded(13); }, "13"},
    {"a named resource that is there", [] { return Stored(u"Name", u"new"); }, "new Name=new"},
    {"a named resource that is not", [] { return Stored(u"Other", u"x"); }, "x Name=old Other=x"},
    {"a long double", [] { return Formatted(u"%.3000Lf"); }, "1.503002"},
    {"a long double with digits", [] { return Formatted(u"%.3000La"); }, "0xc.3007"},
    {"a handle",
     [] {
         char** const handle = NewHandle(3);
         if (handle == nullptr) {
             throw std::bad_alloc();
         }
         const long size = GetHandleSize(handle);
         DisposeHandle(handle);
         return std::to_string(size);
     },
     "3"},
    {"no handle", [] { return std::to_string(GetHandleSize(nullptr)); }, "0"},
    {"a new file",
     [] {
         const std::filesystem::path path = folder / "new";
         const short reference = OpenResourceFile(path, true);
         if (reference < 0 || !CloseResourceFile(reference)) {
             return std::string("not opened");
         }
         std::filesystem::remove(path);
         return ExplainResourceFile(path);
     },
     "no file that can be opened"},
    {"the bundle's folder",
     [] {
         SetMainBundle("relative");
         const std::string problem = ExplainStringTable("Localizable");
         SetMainBundle(folder.Path());
         return ExplainStringTable("Localizable") + problem;
     },
     std::filesystem::current_path().string() + "/relative: no table \"Localizable\"\n"},
};

void SetUp() {
    Files::Write(folder / "Localizable.strings", "10 = ten;");
    Files::Write(folder / "file", Files::Fork({{"STRm", 0, "\0\7\0\1"s},
                                               {"STR#", 200, Files::List({"a", "bb"})},
                                               {"STR ", 9, Files::Pascal("nine")},
                                               {"TEXT", 128, "old", "Name"}}));
    setenv("LC_ALL", "ja_JP.UTF-8", 1);
    SetApplicationTextEncoding(0x08000100);
    SetMainBundle(folder.Path());
    file = OpenResourceFile(folder / "file", true);
    locale = newlocale(LC_ALL_MASK, "C.UTF-8", {});
    uselocale(locale);
}

std::ptrdiff_t CountFiles() {
    using Entries = std::filesystem::directory_iterator;
    return std::distance(Entries("/proc/self/fd"), {}) + std::distance(Entries(folder.Path()), {});
}

/// Shared by the processes.
struct Outcome {
    bool hasFailed;
    long blocks;  ///< What two attempts leave where nothing fails: a string's buffer stays by design.
};

/// In a process of its own.
void Attempt(const Operation& operation, std::size_t allocation, Mode mode, Outcome& outcome) {
    const auto expect = [&](bool holds, const char* what, const std::string& result = "") {
        if (!holds) {
            std::printf("%s, with allocation %zu%s failing: %s %s\n", operation.name, allocation,
                        mode == Mode::kAllFrom ? " and all behind it" : "", what, result.c_str());
            std::fflush(stdout);
            _exit(1);
        }
    };
    const std::ptrdiff_t files = CountFiles();
    const long blocks = s_blocks;
    bool hasThrown = false;
    try {
        s_left = allocation;
        s_mode = mode;
        const std::string result = operation.run();
        s_mode = Mode::kNone;
        expect(result == operation.expected, "gives, and throws nothing:", result);
    } catch (const std::bad_alloc&) {
        s_mode = Mode::kNone;
        hasThrown = true;
    }
    outcome.hasFailed = s_hasFailed;
    expect(uselocale(locale_t{}) == locale, "leaves the locale changed");
    expect(CountFiles() == files, "leaves a file behind");
    if (hasThrown || mode == Mode::kNone) {
        const std::string result = operation.run();
        expect(result == operation.expected, "gives the next time:", result);
    }
    const long left = s_blocks - blocks;
    outcome.blocks = mode == Mode::kNone ? left : outcome.blocks;
    expect(left <= outcome.blocks, "leaks", std::to_string(left - outcome.blocks));
}

}  // namespace

int main() {
    SetUp();
    auto& outcome = *static_cast<Outcome*>(
        mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    int problems = 0;
    for (const Operation& operation : kOperations) {
        for (const Mode mode : {Mode::kNone, Mode::kOne, Mode::kAllFrom}) {
            outcome.hasFailed = true;
            for (std::size_t allocation = 1; outcome.hasFailed; ++allocation) {
                outcome.hasFailed = false;
                if (fork() == 0) {
                    Attempt(operation, allocation, mode, outcome);
                    _exit(0);
                }
                int status = 0;
                wait(&status);
                if (status != 0) {
                    std::printf("%s, with allocation %zu failing, ends with status %x\n", operation.name, allocation,
                                static_cast<unsigned>(status));
                    ++problems;
                }
            }
        }
    }
    return problems == 0 ? 0 : 1;
}
