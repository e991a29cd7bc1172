// Opening files that a careless reader takes quadratic time for: overlapping lists, resources that share data or
// names, tables of texts of nothing but quotes, comments, or references. The figure is for one element of each file.
#include <Lum/CString.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "resources/ResourcesFamily.h"

namespace Bench::Resources {
namespace {

std::string Repeated(std::size_t count, const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

constexpr std::uint64_t kLists = 0x53545223;  // STR#

/// So many types, each with so many of the references, from its offset on.
struct TypeList {
    std::size_t count, references, offset;
};
enum class Data { Own, Shared };

/// A resource file. Each resource is a list of one string.
std::string File(const TypeList& types, std::size_t references, Data data, const std::string& name) {
    const std::string one = Number(6, 4) + Number(1, 2) +
                            "\x03"
                            "abc";
    const std::string lists = Repeated(data == Data::Own ? references : 1, one);
    std::string typeBytes = Number(types.count - 1, 2), referenceBytes;
    for (std::size_t i = 0; i < types.count; ++i) {
        typeBytes += Number(i == 0 ? kLists : i, 4) + Number(types.references - 1, 2) +
                     Number(2 + 8 * types.count + types.offset * i, 2);
    }
    for (std::size_t i = 0; i < references; ++i) {
        referenceBytes += Number(i, 2) + (name.empty() ? "\xFF\xFF" : Number(0, 2)) +
                          Number(data == Data::Own ? one.size() * i : 0, 4) + Number(0, 4);
    }
    const std::size_t mapSize = 28 + typeBytes.size() + referenceBytes.size() + name.size();
    const std::string header =
        Number(16, 4) + Number(16 + lists.size(), 4) + Number(lists.size(), 4) + Number(mapSize, 4);
    return header + lists + header + Number(0, 8) + Number(28, 2) + Number(mapSize - name.size(), 2) + typeBytes +
           referenceBytes + name;
}

std::vector<std::string> ResourceFiles(std::size_t size) {
    return {
        File({1, size, 0}, size, Data::Own, ""),  // Many resources,
        File({1, size, 0}, size, Data::Own,
             "\x05"
             "names"),                                   // that share their name,
        File({1, size, 0}, size, Data::Shared, ""),      // or their data.
        File({size, 1, 12}, size, Data::Own, ""),        // As many types,
        File({size, 1, 0}, 1, Data::Own, ""),            // that share one reference,
        File({size, size / 2, 0}, size, Data::Own, ""),  // or many.
    };
}

std::vector<std::string> Tables(std::size_t size) {
    const std::string list = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>";
    std::vector<std::string> tables;
    for (const std::string& front :
         std::vector<std::string>{"", "\"a\" = \"b\";", "\"", "/*", list, list + "<key>", list + "<!--"}) {
        for (const char* const pattern : {"\"",        "\\",
                                          "\\\"",      "/*",
                                          "*/",        "//\n",
                                          "/",         "\"a\"=\"b\";",
                                          "\"a\"=",    ";",
                                          " ",         "<",
                                          "<key>",     "<!--",
                                          "-->",       "<!-- -->",
                                          "<![CDATA[", "]]>",
                                          "&",         "&amp;",
                                          "&#65;",     "<key>k</key><string>s</string>",
                                          "<dict>"}) {
            tables.push_back(front + Repeated(size, pattern));
        }
    }
    // Binary: as many keys as one object answers to, and lists in lists.
    std::string shared = "bplist00", nested = "bplist00";
    shared += '\xDF';
    shared += '\x11';
    shared += Number(size, 2) + Repeated(2 * size, "\x01") +
              "\x51"
              "a";
    const std::size_t end = shared.size();
    shared += Number(8, 4) + Number(end - 2, 4);
    shared += std::string(6, '\0') + "\x04\x01" + Number(2, 8) + Number(0, 8) + Number(end, 8);
    std::string offsets;
    for (std::size_t i = 0; i < size; ++i) {
        offsets += Number(nested.size(), 4);
        nested += '\xA1';
        nested += Number((i + 1) % size, 2);
    }
    const std::size_t table = nested.size();
    nested += offsets + std::string(6, '\0') + "\x04\x02" + Number(size, 8) + Number(0, 8) + Number(table, 8);
    tables.insert(tables.end(), {shared, nested});
    return tables;
}

/// Writes the files below `folder` and gives their paths.
std::vector<std::filesystem::path> Write(const std::filesystem::path& folder, const std::vector<std::string>& files,
                                         const std::string& name) {
    std::vector<std::filesystem::path> paths;
    for (const std::string& bytes : files) {
        paths.push_back(folder / std::to_string(paths.size()) / name);
        std::filesystem::create_directories(paths.back().parent_path());
        std::ofstream(paths.back(), std::ios::binary) << bytes;
    }
    return paths;
}

}  // namespace

void AddWorstGrowth(const std::filesystem::path& folder) {
    const std::vector<std::size_t> sizes{256, 1'024, 2'048};
    AddGrowthCases("resources/worst of resource files", sizes, [folder](std::size_t size) {
        return [paths = Write(folder / "worst-files", ResourceFiles(size), "strings.rsrc"), size] {
            std::size_t known = 0;
            for (const std::filesystem::path& path : paths) {
                known += Lum::Platform::ExplainResourceFile(path).size();
                const short reference = Lum::Platform::OpenResourceFile(path, false);
                const std::size_t listed = Lum::Platform::ListResources(reference).size();
                if (path == paths.front() && listed != size) {
                    throw std::runtime_error("resources: not read: " + Lum::Platform::ExplainResourceFile(path));
                }
                known += listed;
                gStrResTableInited = false;
                CString text;
                text.LoadString(1);
                Lum::Platform::CloseResourceFile(reference);
            }
            gStrResTableInited = false;
            return known;
        };
    });
    AddGrowthCases("resources/worst of tables of texts", sizes, [folder](std::size_t size) {
        return [paths = Write(folder / "worst-tables", Tables(size), "Localizable.strings")] {
            std::size_t known = 0;
            for (const std::filesystem::path& path : paths) {
                Lum::Platform::SetMainBundle(path.parent_path());
                known += Lum::Platform::ExplainStringTable("").size();
            }
            return known;
        };
    });
}

}  // namespace Bench::Resources
