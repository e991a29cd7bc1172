// Finds the tables of the current locale and keeps them.
#include "Platform/CoreFoundation/CoreFoundation.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/Platform.h>

#include "Platform/CoreFoundation/CFObject.h"
#include "Platform/CoreFoundation/StringTable.h"
#include "Platform/Host/DiskFile.h"
#include "Platform/Host/Locale.h"

using namespace Lum::Internal;

namespace {

using CoreFoundation::StringTable;
using CoreFoundation::Units;
using Host::InFolder;

constexpr std::string_view kDefaultTable = "Localizable";

std::vector<std::string> LanguageFolders() {
    const Host::Locale& locale = Host::CurrentLocale();
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

std::string FolderOfTables(const std::string& bundle) {
    std::string resources = InFolder(bundle, "Resources");
    struct stat status {};
    return stat(resources.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? resources : bundle;
}

/// The files that a search for a table could not use: a line for each of them, and whether one could not be
/// opened or read, so that another search may find it.
struct Skipped {
    std::string problems;
    bool mayChange = false;

    void Add(const std::string& path, std::string_view problem) {
        problems.append(path).append(": ").append(problem).append("\n");
    }
};

/// Reads the first file that is a table.
std::optional<StringTable> FindTable(const std::string& bundle, const std::string& name, Skipped& skipped) {
    if (name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
        return std::nullopt;
    }
    const std::string folder = FolderOfTables(bundle);
    for (const std::string& language : LanguageFolders()) {
        const std::string path = InFolder(InFolder(folder, language), name + ".strings");
        const Host::InputFile file(path);
        if (!file.IsOpen()) {
            if (file.IsThere()) {
                skipped.Add(path, "no file that can be opened");
                skipped.mayChange = true;
            }
            continue;
        }
        // One byte more than a table has is enough to refuse it.
        std::string bytes(
            static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), CoreFoundation::kMostTableBytes + 1)), '\0');
        if (!file.Read(0, bytes.size(), bytes.data())) {
            skipped.Add(path, "cannot be read");
            skipped.mayChange = true;
            continue;
        }
        StringTable table;
        const std::string problem = CoreFoundation::ReadStringTable(bytes, table);
        if (problem.empty()) {
            table.Sort();
            return table;
        }
        skipped.Add(path, problem);
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
    explicit Bundle(std::string folder) : m_Folder(std::move(folder)) {}

    [[nodiscard]] const std::string& Folder() const { return m_Folder; }
    void SetFolder(std::string folder) {
        m_Folder = std::move(folder);
        m_Tables.clear();
    }

    /// Null if there is none.
    const StringTable* Table(const std::string& name) {
        auto found = m_Tables.find(name);
        if (found == m_Tables.end() || found->second.mayChange) {
            Skipped skipped;
            found = m_Tables.insert_or_assign(name, Kept{FindTable(m_Folder, name, skipped), skipped.mayChange}).first;
        }
        return found->second.table ? &*found->second.table : nullptr;
    }

private:
    struct Kept {
        std::optional<StringTable> table;
        bool mayChange;  ///< search again at the next look-up
    };

    std::string m_Folder;
    std::map<std::string, Kept> m_Tables;
};

std::string ExecutablesFolder() {
    char path[PATH_MAX];
    const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
    return Host::FolderOf({path, static_cast<std::size_t>(std::max<ssize_t>(size, 0))});
}

/// Never destroyed, because static destructors may still load strings.
Bundle& MainBundle() {
    static auto* const bundle = new Bundle(ExecutablesFolder());
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
    const std::string& path = directory.native();
    char current[PATH_MAX];
    const bool isRelative = !path.starts_with('/') && getcwd(current, sizeof current) != nullptr;
    MainBundle().SetFolder(isRelative ? InFolder(current, path) : path);
}

std::string Lum::Platform::ExplainStringTable(const std::string& name) {
    const std::string table = name.empty() ? std::string(kDefaultTable) : name;
    Skipped skipped;
    if (!FindTable(MainBundle().Folder(), table, skipped)) {
        skipped.Add(FolderOfTables(MainBundle().Folder()), "no table \"" + table + '"');
    }
    return std::move(skipped.problems);
}
