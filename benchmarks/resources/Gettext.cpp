// gettext of the C library: dgettext, in a catalogue of messages.
#include <libintl.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>

#include "resources/ResourcesFamily.h"

namespace Bench::Resources {
namespace {

std::string Word(std::size_t number) {
    const auto word = static_cast<std::uint32_t>(number);
    return {reinterpret_cast<const char*>(&word), sizeof word};
}

/// The layout of a catalogue: seven words, the places of the keys, sorted, those of the texts, and both;
/// the empty key leads to the encoding. Without a hash table keys are searched in their order.
std::string MakeCatalogue(const std::vector<Entry>& entries) {
    std::vector<std::pair<std::string, std::string>> messages{{"", "Content-Type: text/plain; charset=UTF-8\n"}};
    for (const Entry& entry : entries) {
        messages.emplace_back(entry.key, entry.text);
    }
    const std::size_t tableSize = 8 * messages.size(), firstText = 28 + 2 * tableSize;
    std::string keys, texts, strings;
    for (const bool isKey : {true, false}) {
        for (const auto& [key, text] : messages) {
            const std::string& string = isKey ? key : text;
            (isKey ? keys : texts) += Word(string.size()) + Word(firstText + strings.size());
            strings += string;
            strings += '\0';
        }
    }
    return Word(0x950412DE) + Word(0) + Word(messages.size()) + Word(28) + Word(28 + tableSize) + Word(0) +
           Word(firstText) + keys + texts + strings;
}

void AddCases(const std::string& name, const Inputs& inputs) {
    const std::filesystem::path folder = inputs.folder / "xx" / "LC_MESSAGES";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "strings.mo", std::ios::binary) << MakeCatalogue(inputs.all);
    setenv("LANGUAGE", "xx", 1);
    std::setlocale(LC_MESSAGES, "C.UTF-8");
    bindtextdomain("strings", inputs.folder.c_str());
    bind_textdomain_codeset("strings", "UTF-8");
    bind_textdomain_codeset("fresh", "UTF-8");
    const auto lookUp = [](const Entry& entry) -> const char* { return dgettext("strings", entry.key.c_str()); };
    AddLookUpCases(name, inputs, lookUp, [](const char* answer) { return std::string(answer); });
    AddOpenCase(
        name, [&inputs] { return FreshPath(inputs); },
        [&inputs](const std::filesystem::path& fresh) {
            bindtextdomain("fresh", fresh.c_str());
            benchmark::DoNotOptimize(dgettext("fresh", inputs.all.back().key.c_str()));
        });
}

const AddSubject add{{"gettext", AddCases}};

}  // namespace
}  // namespace Bench::Resources
