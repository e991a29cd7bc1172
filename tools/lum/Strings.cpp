// lum strings: what is in a resource file, strings by number, and a named resource set.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>
#include <Lum/Transcoder.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Conversion.h"
#include "tools/lum/Display.h"
#include "tools/lum/Host.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Output.h"
#include "tools/lum/ResourceTexts.h"

namespace Tool {
namespace {

struct StringsOptions {
    bool json = false;
    std::vector<std::string> files;
    std::vector<std::string> numbers;
    std::string bundle;
    std::vector<std::string> tables;
    std::string encoding;
    std::vector<std::string> set;  // type, name and text
};

/// An open resource file.
class File {
public:
    File(const std::string& name, bool isWritable)
        : m_Name(name), m_Reference(Lum::Platform::OpenResourceFile(name, isWritable)) {
        if (m_Reference == -1) {
            const std::string problem = Lum::Platform::ExplainResourceFile(name);
            throw std::runtime_error(Printable(name) + ": " + (problem.empty() ? "cannot be written" : problem));
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { Lum::Platform::CloseResourceFile(m_Reference); }

    [[nodiscard]] short Reference() const { return m_Reference; }
    void Update() const {
        if (!Lum::Platform::UpdateResourceFile(m_Reference)) {
            throw std::runtime_error("cannot write " + Printable(m_Name));
        }
    }

private:
    const std::string m_Name;
    const short m_Reference;
};

/// Of one to four characters; a short one is filled up with blanks.
std::uint32_t CodeOf(std::string type) {
    if (type.empty() || type.size() > 4) {
        throw std::runtime_error("a type has four characters, not \"" + Printable(type) + '"');
    }
    type.resize(4, ' ');
    std::uint32_t code = 0;
    for (const char c : type) {
        code = code << 8 | static_cast<unsigned char>(c);
    }
    return code;
}

/// With the file's name at each, where there are several.
void List(const StringsOptions& options, const std::string& name) {
    const File file(name, false);
    const bool isOneOfMany = options.files.size() > 1;
    if (isOneOfMany && !options.json) {
        WriteText((name == options.files.front() ? "" : "\n") + Subject(name));
    }
    for (const Lum::Platform::ResourceEntry& resource : Lum::Platform::ListResources(file.Reference())) {
        if (options.json) {
            auto object = isOneOfMany ? nlohmann::ordered_json{{"file", name}} : nlohmann::ordered_json::object();
            object.update(AsJson(resource));
            WriteJson(object);
        } else {
            WriteText(AsRows(resource));
        }
    }
}

void LookUp(const StringsOptions& options, int& status) {
    std::deque<File> files;
    for (const std::string& name : options.files) {
        files.emplace_back(name, false);
    }
    if (!options.bundle.empty()) {
        if (!std::filesystem::is_directory(options.bundle)) {
            throw std::runtime_error(Printable(options.bundle) + ": no folder");
        }
        Lum::Platform::SetMainBundle(options.bundle);
    }
    for (const std::string& table : options.tables) {
        CString::AddStringTableForSearch(table.c_str());
        const std::string problems = Lum::Platform::ExplainStringTable(table);
        for (std::size_t at = 0, end = 0; (end = problems.find('\n', at)) != std::string::npos; at = end + 1) {
            WriteError(Printable(problems.substr(at, end - at)));
        }
    }
    for (const std::string& text : options.numbers) {
        unsigned int number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        CString string;
        const bool isFound = string.LoadString(number);
        status |= isFound ? 0 : 1;
        if (options.json) {
            WriteJson({{"number", number}, {"found", isFound}, {"text", string.ToUTF8()}});
        } else {
            WriteLine(Printable(string.ToUTF8()));
        }
    }
}

/// Throws where the text is not UTF-8.
CString Units(const std::string& text) {
    const auto units = Lum::ConvertTextToUTF16(text, "utf-8");
    if (units.status != Lum::ConversionStatus::kDone) {
        throw std::runtime_error("not UTF-8: \"" + Printable(text) + '"');
    }
    return CString(units.text);
}

/// Throws where a resource of the text, or a name, would have less than all of it: it has to be in the encoding, and
/// has at most two bytes for each UTF-16 unit, a name 254 in all.
void CheckStored(const CString& text, const CString& name, bool isUnicode) {
    char** handle = nullptr;
    CString back;
    if (!isUnicode) {
        text.UnloadString(&handle);
        back.LoadString(handle);
        DisposeHandle(handle);
    }
    if (!isUnicode && back != text) {
        throw std::runtime_error("the encoding has no room for all of the text; type \"utxt\" has");
    }
    std::array<unsigned char, 256> pascal{};
    name.ToMac(pascal.data(), static_cast<long>(pascal.size()));
    back.FromMac(pascal.data());
    if (back != name) {
        throw std::runtime_error("a name has at most 254 bytes in the encoding: \"" + Printable(name.ToUTF8()) + '"');
    }
}

void Set(const StringsOptions& options) {
    const std::string &type = options.set[0], &name = options.set[1], &text = options.set[2];
    const std::uint32_t code = CodeOf(type);
    if (code == kStringList || code == kIndex) {
        throw std::runtime_error("more than a text: \"" + type + '"');
    }
    if (options.files.size() > 1) {
        throw std::runtime_error("--set takes one file");
    }
    const CString value = Units(text), named = Units(name);
    const bool isUnicode = code == kSingleString || code == kUnicodeText;
    CheckStored(value, named, isUnicode);
    const FolderLock alone(options.files.front());
    const File file(options.files.front(), true);
    (code == kSingleString ? PascalAsUnits(value) : value).UnloadString(code, named, isUnicode);
    file.Update();
}

bool IsNumber(const std::string& text) {
    unsigned int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

void AddStrings(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("strings", "Show what is in a resource file, look numbers up, or set a text");
    const auto options = std::make_shared<StringsOptions>();
    command->add_flag("--json", options->json, "Print one JSON object a line");
    AddTexts(*command, "FILE", options->files,
             "The resource files; with numbers behind them, print the strings of these")
        ->required()
        ->option_text("... [NUMBER...]");
    AddText(*command, "--bundle", options->bundle, "The folder of the localised-strings tables")->option_text("DIR");
    AddTexts(*command, "--table", options->tables, "Look in these tables too")->option_text("NAME ...");
    AddText(*command, "--encoding", options->encoding, "The encoding of texts and names")
        ->option_text("ENC")
        ->check(CheckEncoding);
    auto* set = AddTexts(*command, "--set", options->set, "Write a text into the resource of this type and name");
    set->option_text("TYPE NAME TEXT")->expected(3);
    command->callback([options, &status] {
        if (!options->encoding.empty()) {
            Lum::Platform::SetApplicationTextEncoding(Lum::EncodingToCharSetID(options->encoding));
        }
        // A file whose name is a number is given as "./1".
        const auto numbers = std::find_if(options->files.begin(), options->files.end(), IsNumber);
        options->numbers.assign(numbers, options->files.end());
        options->files.erase(numbers, options->files.end());
        if (const auto wrong = std::find_if_not(options->numbers.begin(), options->numbers.end(), IsNumber);
            wrong != options->numbers.end()) {
            throw std::runtime_error("no string number: \"" + Printable(*wrong) + '"');
        }
        if (options->files.empty()) {
            throw std::runtime_error("no file before the numbers; write ./ before a file's name that is a number");
        }
        if (!options->set.empty()) {
            Set(*options);
        } else if (!options->numbers.empty()) {
            LookUp(*options, status);
        } else {
            for (const std::string& file : options->files) {
                List(*options, file);
            }
        }
    });
}

}  // namespace Tool
