// Property: a table of any bytes answers or is explained, never both, and unfolds to a small multiple of
// its size; a number that it does not know loads its own decimal text.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/StringResources.h>

#include "fuzz/Fuzz.h"
#include "fuzz/Seeds.h"
#include "tests/Resources/Files.h"

using namespace std::string_literals;

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned number) {
    static const std::vector<std::string> seeds = {
        "/* c */ \"1\" = \"one\\n\\U1234\"; // d\n2 = \"\";\n\"\\\"\" = word;",
        "\xFF\xFE"
        "1\0=\0a\0;\0\"\0"
        "2\0\"\0=\0\"\0\\\0n\0\"\0;\0"s,
        "<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"a\" \"b\"><plist version=\"1.0\"><!-- c --><dict><key>1</key>"
        "<string>&lt;&#65;<![CDATA[x]]></string><key>2</key><string/></dict></plist>",
        "bplist00\xD2\x01\x02\x03\x04\x51\x31\x51\x32\x53one\x61" + "\0\xE9\x08\x0D\x0F\x11\x15"s +
            std::string(6, '\0') + "\x01\x01" + Files::Number(5, 8) + Files::Number(0, 8) + Files::Number(0x18, 8),
    };
    return MutateOrSeed(seeds, data, size, mostSize, number);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path folder = [] {
        std::filesystem::path made =
            (std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path()) /
            std::filesystem::path("lum-fuzz-" + std::to_string(getpid()));
        std::filesystem::create_directory(made);
        return made;
    }();
    std::ofstream(folder / "Localizable.strings", std::ios::binary)
        << std::string_view(reinterpret_cast<const char*>(data), size);
    Lum::Platform::SetMainBundle(folder);
    gStrResTableInited = false;
    const bool isTable = Lum::Platform::ExplainStringTable("").empty();
    for (int number = 1; number < 4; ++number) {
        CString text;
        const bool isFound = text.LoadString(number);
        Require(isFound != text.IsEmpty());
        Require(isTable || text.GetIntValue() == number);
    }
    return 0;
}
