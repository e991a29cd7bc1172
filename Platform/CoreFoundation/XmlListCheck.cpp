// Checks that an XML property list is one dictionary of strings, before libplist reads it. The tags must come in
// the one order that such a list has. Texts are not checked, except for the number of their entities, which
// decides how long libplist takes.
#include "Platform/CoreFoundation/StringTable.h"

#include <algorithm>
#include <cstddef>

namespace Lum::Internal::CoreFoundation {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
/// The most bytes that libplist may move because of entities, which takes some milliseconds.
constexpr std::size_t kMostMoves = 1 << 28;

class XmlListChecker {
public:
    explicit XmlListChecker(std::string_view text) : m_Text(text), m_Rest(text) {}

    std::string Check() {
        if (m_Text.find('\0') != std::string_view::npos) {
            return "a NUL in the property list";
        }
        const bool isList = SkipProlog() && OpenTag("plist") && CheckDictionary() && SkipMisc() && CloseTag("plist") &&
                            SkipMisc() && (m_Rest.empty() || Fail("text behind the end"));
        return isList ? std::string() : "line " + std::to_string(Line()) + ": " + m_Problem;
    }

private:
    bool Fail(const char* problem) {
        if (m_Problem == nullptr) {
            m_Problem = problem;
        }
        return false;
    }
    [[nodiscard]] std::size_t Line() const {
        const std::string_view done = m_Text.substr(0, m_Text.size() - m_Rest.size());
        return 1 + static_cast<std::size_t>(std::count(done.begin(), done.end(), '\n'));
    }

    bool Take(std::string_view token) {
        if (!m_Rest.starts_with(token)) {
            return false;
        }
        m_Rest.remove_prefix(token.size());
        return true;
    }
    bool SkipBehind(std::string_view token) {
        const std::size_t at = m_Rest.find(token);
        if (at == std::string_view::npos) {
            return Fail("a part without end");
        }
        m_Rest.remove_prefix(at + token.size());
        return true;
    }
    void SkipBlanks() { m_Rest.remove_prefix(std::min(m_Rest.find_first_not_of(kBlanks), m_Rest.size())); }

    /// Blanks and comments; false at a comment without end.
    bool SkipMisc() {
        for (SkipBlanks(); Take("<!--"); SkipBlanks()) {
            if (!SkipBehind("-->")) {
                return false;
            }
        }
        return true;
    }

    bool SkipProlog() {
        SkipBlanks();
        if (Take("<?xml") && !SkipBehind("?>")) {
            return false;
        }
        if (!SkipMisc()) {
            return false;
        }
        if (Take("<!DOCTYPE")) {
            const std::string_view type = m_Rest.substr(0, m_Rest.find('>'));
            if (type.find_first_of("[<") != std::string_view::npos) {
                return Fail("declarations in the document type");
            }
            return SkipBehind(">") && SkipMisc();
        }
        return true;
    }

    /// An opening tag with any attributes.
    bool OpenTag(std::string_view name) {
        const std::string_view tag = m_Rest.substr(0, m_Rest.find('>'));
        if (!tag.starts_with('<') || !tag.substr(1).starts_with(name) || tag.find('<', 1) != std::string_view::npos ||
            tag.ends_with('/') ||
            (tag.size() > 1 + name.size() && kBlanks.find(tag[1 + name.size()]) == std::string_view::npos)) {
            return Fail("not a property list");
        }
        return SkipBehind(">");
    }
    bool CloseTag(std::string_view name) {
        if (!Take("</") || !Take(name)) {
            return Fail("an element that is not closed, or has elements inside");
        }
        SkipBlanks();
        return Take(">") || Fail("an element that is not closed");
    }

    bool CheckDictionary() {
        if (!SkipMisc()) {
            return false;
        }
        if (Take("<dict/>")) {
            return true;
        }
        if (!Take("<dict>")) {
            return Fail("the property list is no dictionary");
        }
        while (SkipMisc() && !m_Rest.starts_with("</")) {
            if (!CheckText("key") || !SkipMisc() || !CheckText("string")) {
                return false;
            }
        }
        return m_Problem == nullptr && CloseTag("dict");
    }

    /// <name>text</name>, or <name/>.
    bool CheckText(std::string_view name) {
        if (!Take("<") || !Take(name)) {
            return Fail("not a pair of key and string");
        }
        if (Take("/>")) {
            return true;
        }
        if (!Take(">")) {
            return Fail("not a pair of key and string");
        }
        const std::string_view text = m_Rest;
        for (;;) {
            m_Rest.remove_prefix(std::min(m_Rest.find('<'), m_Rest.size()));
            if (!Take("<![CDATA[")) {
                return CountEntities(text.substr(0, text.size() - m_Rest.size())) && CloseTag(name);
            }
            if (!SkipBehind("]]>")) {
                return false;
            }
        }
    }

    /// For every entity, libplist moves the rest of the text.
    bool CountEntities(std::string_view text) {
        const auto entities = static_cast<std::size_t>(std::count(text.begin(), text.end(), '&'));
        if (entities != 0 && text.size() > m_MovesLeft / entities) {
            return Fail("too many entities in long texts");
        }
        m_MovesLeft -= entities * text.size();
        return true;
    }

    std::string_view m_Text, m_Rest;
    std::size_t m_MovesLeft = kMostMoves;
    const char* m_Problem = nullptr;
};

}  // namespace

std::string CheckXmlList(std::string_view bytes) { return XmlListChecker(bytes).Check(); }

}  // namespace Lum::Internal::CoreFoundation
