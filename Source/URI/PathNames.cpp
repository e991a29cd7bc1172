// The last component of the path: its name, its extension, and whether it is a directory.
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Paths.h"

namespace Lum {

using namespace Internal;

namespace {

/// The part of a name from its last dot on. Empty if there is no dot or if it is the first character, which marks a
/// hidden name.
std::string_view ExtensionOf(std::string_view name) noexcept {
    const std::size_t dot = FindLast(name, '.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view{} : name.substr(dot);
}

std::string_view WithoutDot(std::string_view extension) noexcept {
    return extension.starts_with('.') ? extension.substr(1) : extension;
}

}  // namespace

bool URI::IsDirectory() const { return m_Path.ends_with('/'); }

URI::StringProxy URI::GetFilename(bool withoutExtension) const {
    if (IsDirectory()) {
        return "";
    }
    const UnescapedView path(m_Path);
    std::string_view name = LastSegment(path.Get());
    if (withoutExtension) {
        // Compatibility: a leading dot counts here, unlike for the extension, so that ".profile" leaves nothing.
        // A change would change the file names that callers build from the stem.
        name = name.substr(0, FindLast(name, '.'));
    }
    return name;
}

URI::StringProxy URI::GetExtension(bool withoutDot) const {
    if (IsDirectory()) {
        return "";
    }
    const UnescapedView path(m_Path);
    const std::string_view extension = ExtensionOf(LastSegment(path.Get()));
    return withoutDot ? WithoutDot(extension) : extension;
}

URI::StringProxy URI::GetLastPathComponent() const {
    if (!IsDirectory()) {
        return GetFilename(false);
    }
    const UnescapedView view(m_Path);
    std::string_view path = view.Get();
    if (path.empty() || path == "/") {
        return "";
    }
    path.remove_suffix(1);
    return LastSegment(path);
}

URI::StringProxy URI::RemoveLastPathComponent() {
    StringProxy removed = GetLastPathComponent();
    ChDir(IsDirectory() ? ".." : ".", false);
    return removed;
}

bool URI::IsOfFileType(StringProxy type) const {
    const std::string_view wanted = type.m_Text;
    const std::string extension = GetExtension(true);
    return !extension.empty() && EqualIgnoringAsciiCase(extension, wanted.substr(FindLast(wanted, '.') + 1));
}

}  // namespace Lum
