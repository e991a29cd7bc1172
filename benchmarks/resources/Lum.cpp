// Lum: CString::LoadString, through the index of a resource file to its string lists.
#include <Lum/CString.h>

#include <fstream>

#include <Lum/Platform.h>

#include "resources/ResourcesFamily.h"

namespace Bench::Resources {
namespace {

/// A file of lists of 500 strings, with their index.
std::string MakeFile(const std::vector<Entry>& entries) {
    constexpr std::size_t perList = 500, firstList = 200;
    const std::size_t lists = (entries.size() + perList - 1) / perList;
    std::string data, references, index;
    const auto addResource = [&](std::size_t id, const std::string& bytes) {
        references += Number(id, 2) + "\xFF\xFF" + Number(data.size(), 4) + Number(0, 4);
        data += Number(bytes.size(), 4) + bytes;
    };
    for (std::size_t i = 0; i < entries.size(); ++i) {
        index += Number(entries[i].number, 2) + Number(i, 2);
    }
    for (std::size_t list = 0; list < lists; ++list) {
        const std::size_t first = list * perList, last = std::min(first + perList, entries.size());
        std::string bytes = Number(last - first, 2);
        for (std::size_t i = first; i < last; ++i) {
            bytes += Number(entries[i].text.size(), 1) + entries[i].text;
        }
        addResource(firstList + list, bytes);
    }
    addResource(0, index);
    const std::string types = Number(1, 2) + "STR#" + Number(lists - 1, 2) + Number(18, 2) + "STRm" + Number(0, 2) +
                              Number(18 + 12 * lists, 2);
    const std::size_t mapSize = 28 + types.size() + references.size();
    const std::string header =
        Number(16, 4) + Number(16 + data.size(), 4) + Number(data.size(), 4) + Number(mapSize, 4);
    return header + data + header + Number(0, 8) + Number(28, 2) + Number(mapSize, 2) + types + references;
}

short Open(const std::filesystem::path& path) {
    const short reference = Lum::Platform::OpenResourceFile(path, false);
    gStrResTableInited = false;
    return reference;
}

void AddCases(const std::string& name, const Inputs& inputs) {
    const std::filesystem::path path = inputs.folder / "strings.rsrc";
    const std::string bytes = MakeFile(inputs.all);
    std::ofstream(path, std::ios::binary) << bytes;
    Lum::Platform::SetApplicationTextEncoding(0x08000100);
    Open(path);
    // A locked string keeps its buffer, where every other one would be left behind with each new text.
    static CString text;
    text.GetBufferSetLength(64);
    text.LockBuffer();
    const auto lookUp = [](const Entry& entry) -> const CString& {
        text.LoadString(entry.number);
        return text;
    };
    AddLookUpCases(name, inputs, lookUp, [](const CString& answer) { return answer.ToUTF8(); });
    AddOpenCase(
        name, [&inputs] { return FreshPath(inputs) / "strings.rsrc"; },
        [&inputs](const std::filesystem::path& fresh) {
            const short reference = Open(fresh);
            text.LoadString(inputs.all.back().number);
            Lum::Platform::CloseResourceFile(reference);
            gStrResTableInited = false;
        });
    AddWorstGrowth(inputs.folder);
}

const AddSubject add{{"Lum", AddCases}};

}  // namespace
}  // namespace Bench::Resources
