// ICU: a ResourceBundle with the numbers as keys, compiled by ICU's own genrb.
#include <unicode/resbund.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "resources/ResourcesFamily.h"

namespace Bench::Resources {
namespace {

void Compile(const Inputs& inputs) {
    const std::filesystem::path source = inputs.folder / "root.txt";
    {
        std::ofstream file(source);
        file << "root {\n";
        for (const Entry& entry : inputs.all) {
            file << entry.key << " { \"" << entry.text << "\" }\n";
        }
        file << "}\n";
    }
    const std::string command = LUM_GENRB " -q -e UTF-8 -d '" + inputs.folder.string() + "' '" + source.string() + "'";
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("genrb cannot compile " + source.string());
    }
}

icu::ResourceBundle Open(const std::filesystem::path& folder) {
    UErrorCode status = U_ZERO_ERROR;
    return {folder.c_str(), icu::Locale::getRoot(), status};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    Compile(inputs);
    const auto lookUp = [bundle = Open(inputs.folder)](const Entry& entry) {
        UErrorCode status = U_ZERO_ERROR;
        return bundle.getStringEx(entry.key.c_str(), status);
    };
    AddLookUpCases(name, inputs, lookUp, [](const icu::UnicodeString& answer) {
        std::string utf8;
        return answer.toUTF8String(utf8);
    });
    AddOpenCase(
        name, [&inputs] { return FreshPath(inputs); },
        [&inputs](const std::filesystem::path& fresh) {
            UErrorCode status = U_ZERO_ERROR;
            benchmark::DoNotOptimize(Open(fresh).getStringEx(inputs.all.back().key.c_str(), status));
        });
}

const AddSubject add{{"ICU", AddCases}};

}  // namespace
}  // namespace Bench::Resources
