// The last component of the path: its name, its extension, and whether it is a directory.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/Block16.h"
#include "Source/Base/ByteSearch.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Paths.h"

namespace Lum {

using namespace Internal;

namespace {

/// The last segment of the unescaped path, and where its last dot is.
class LastName {
public:
    explicit LastName(std::string_view path) {
        if (!FindInLastBlock(path)) {
            if (FindFirst(path, '%') != std::string_view::npos) {
                m_Text = UnescapeText(path);
                path = m_Text;
            }
            m_Name = LastSegment(path);
            m_Dot = FindLast(m_Name, '.');
        }
    }
    LastName(const LastName&) = delete;
    LastName& operator=(const LastName&) = delete;

    [[nodiscard]] std::string_view Whole() const noexcept { return m_Name; }
    [[nodiscard]] std::string_view BeforeLastDot() const noexcept { return m_Name.substr(0, m_Dot); }
    /// From the last dot on. Empty if there is no dot or if it is the first character, which marks a hidden name.
    [[nodiscard]] std::string_view Extension() const noexcept {
        return m_Dot == std::string_view::npos || m_Dot == 0 ? std::string_view{} : m_Name.substr(m_Dot);
    }

private:
    /// Most names are short. Then one block shows the slash, the dot, and that no escape is near; if not, false.
    bool FindInLastBlock(std::string_view path) noexcept {
        const auto [block, blockStart, fresh] = BlockedText<Block16>(path).At(path.empty() ? 0 : path.size() - 1);
        const auto start = static_cast<std::size_t>(std::bit_width(block.Equals('/')));
        // An escape takes two more bytes, and one of them may be the slash: "%4/" is one.
        const std::size_t near = start < 3 ? 0 : start - 3;
        if (block.Equals('%') >> near != 0 || (start < 3 && blockStart != 0)) {
            return false;
        }
        m_Name = path.substr(blockStart + start);
        const std::uint32_t dots = block.Equals('.') >> start;
        m_Dot = dots == 0 ? std::string_view::npos : static_cast<std::size_t>(std::bit_width(dots)) - 1;
        return true;
    }

    std::string m_Text;
    std::string_view m_Name;
    std::size_t m_Dot = std::string_view::npos;
};

std::string_view WithoutDot(std::string_view extension) noexcept {
    return extension.starts_with('.') ? extension.substr(1) : extension;
}

}  // namespace

bool URI::IsDirectory() const { return m_Path.ends_with('/'); }

URI::StringProxy URI::GetFilename(bool withoutExtension) const {
    if (IsDirectory()) {
        return "";
    }
    const LastName name(m_Path);
    // Compatibility: a leading dot counts here, unlike for the extension, so that ".profile" leaves nothing.
    // A change would change the file names that callers build from the stem.
    return withoutExtension ? name.BeforeLastDot() : name.Whole();
}

URI::StringProxy URI::GetExtension(bool withoutDot) const {
    if (IsDirectory()) {
        return "";
    }
    const LastName name(m_Path);
    return withoutDot ? WithoutDot(name.Extension()) : name.Extension();
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
