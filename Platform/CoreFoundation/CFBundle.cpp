// Finds tables by the host's locale and keeps them.
#include "Platform/CoreFoundation/CFBundle.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <Lum/Platform.h>

#include "Platform/CoreFoundation/CFStringObject.h"
#include "Platform/CoreFoundation/StringTable.h"
#include "Platform/Resources/DiskFile.h"
#include "Platform/Script/HostLocale.h"

namespace {

using CoreFoundation::StringTable;
using CoreFoundation::Units;

constexpr std::string_view kDefaultTable = "Localizable";

std::vector<std::string> LanguageFolders() {
    const HostLocale::Locale& locale = HostLocale::Current();
    std::vector<std::string> names;
    if (!locale.language.empty()) {
        if (!locale.territory.empty()) {
            names.push_back(locale.language + '_' + locale.territory);
        }
        names.push_back(locale.language);
    }
    names.insert(names.end(), {"en", "Base"});
    for (std::string& name : names) {
        name += ".lproj";
    }
    names.emplace_back();
    return names;
}

std::filesystem::path FolderOfTables(const std::filesystem::path& bundle) {
    std::error_code error;
    const std::filesystem::path resources = bundle / "Resources";
    return std::filesystem::is_directory(resources, error) ? resources : bundle;
}

/// Reads the first file that is a table; of each one before it, `problems` gets a line.
std::optional<StringTable> FindTable(const std::filesystem::path& bundle, const std::string& name,
                                     std::string& problems) {
    if (name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
        return std::nullopt;
    }
    const std::filesystem::path folder = FolderOfTables(bundle);
    for (const std::string& language : LanguageFolders()) {
        const std::filesystem::path path = folder / language / (name + ".strings");
        const Resources::InputFile file(path);
        if (!file.IsOpen()) {
            continue;
        }
        // One byte more than a table has is enough to refuse it.
        std::string bytes(
            static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), CoreFoundation::kMostTableBytes + 1)), '\0');
        StringTable table;
        const std::string problem =
            file.Read(0, bytes.size(), bytes.data()) ? CoreFoundation::ReadStringTable(bytes, table) : "cannot be read";
        if (problem.empty()) {
            table.Sort();
            return table;
        }
        problems += path.string() + ": " + problem + '\n';
    }
    return std::nullopt;
}

/// A string's text in UTF-8; empty if it is not UTF-16.
std::string Utf8Of(CFStringRef string) {
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    const bool isText = CFStringGetCString(string, text.data(), size + 1, kCFStringEncodingUTF8) != 0;
    text.resize(isText ? text.find('\0') : 0);
    return text;
}

class Bundle : public CoreFoundation::Object {
public:
    explicit Bundle(std::filesystem::path folder) : m_Folder(std::move(folder)) {}

    [[nodiscard]] const std::filesystem::path& Folder() const { return m_Folder; }
    void SetFolder(std::filesystem::path folder) {
        m_Folder = std::move(folder);
        m_Tables.clear();
    }

    /// Null if there is none.
    const StringTable* Table(const std::string& name) {
        auto found = m_Tables.find(name);
        if (found == m_Tables.end()) {
            std::string problems;
            found = m_Tables.emplace(name, FindTable(m_Folder, name, problems)).first;
        }
        return found->second ? &*found->second : nullptr;
    }

private:
    std::filesystem::path m_Folder;
    std::map<std::string, std::optional<StringTable>> m_Tables;
};

/// Never destroyed, for static destructors may still load strings.
Bundle& MainBundle() {
    static auto* const bundle = [] {
        std::error_code error;
        return new Bundle(std::filesystem::read_symlink("/proc/self/exe", error).parent_path());
    }();
    return *bundle;
}

bool IsEmpty(CFStringRef string) { return string == nullptr || CFStringGetLength(string) == 0; }

}  // namespace

CFBundleRef CFBundleGetMainBundle() { return reinterpret_cast<CFBundleRef>(&MainBundle()); }

CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value, CFStringRef tableName) {
    const StringTable* const table =
        reinterpret_cast<Bundle*>(bundle)->Table(IsEmpty(tableName) ? std::string(kDefaultTable) : Utf8Of(tableName));
    const auto found = table == nullptr ? std::nullopt : table->Find(CoreFoundation::String::From(key).Units());
    if (found) {
        return CoreFoundation::CopyOf(*found);
    }
    return static_cast<CFStringRef>(CFRetain(IsEmpty(value) ? key : value));
}

void Lum::Platform::SetMainBundle(const std::filesystem::path& directory) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, error);
    MainBundle().SetFolder(error ? directory : absolute);
}

std::string Lum::Platform::ExplainStringTable(const std::string& name) {
    const std::string table = name.empty() ? std::string(kDefaultTable) : name;
    std::string problems;
    if (!FindTable(MainBundle().Folder(), table, problems)) {
        problems += FolderOfTables(MainBundle().Folder()).string() + ": no table \"" + table + "\"\n";
    }
    return problems;
}
