// Reads tables of old-style text: "key" = "value"; with blanks and comments between the tokens. Quotes
// may be left out around words of letters, digits and "_$.:-". In quotes, "\n", "\t", "\r" and "\U" with
// four hexadecimal digits stand for one unit; after any other backslash a character means itself.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/CoreFoundation/StringTable.h"

using namespace Lum::Internal;

namespace Lum::Internal::CoreFoundation {
namespace {

bool IsBlank(UniChar unit) { return unit == ' ' || (unit >= '\t' && unit <= '\r') || unit == 0x2028 || unit == 0x2029; }

bool IsWord(UniChar unit) {
    const auto lower = static_cast<UniChar>(unit | 0x20);
    return (unit >= '0' && unit <= '9') || (lower >= 'a' && lower <= 'z') ||
           (unit < 0x80 && std::string_view("_$.:-").find(static_cast<char>(unit)) != std::string_view::npos);
}

/// The value of a hexadecimal digit; -1 for anything else.
int DigitValue(UniChar unit) {
    const auto lower = static_cast<UniChar>(unit | 0x20);
    if (unit >= '0' && unit <= '9') {
        return unit - '0';
    }
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

class Parser {
public:
    explicit Parser(Units text) : m_Text(text) {}

    std::string Parse(StringTable& table) {
        std::vector<UniChar> key, value;
        while (SkipBlanks() && m_At < m_Text.size()) {
            if (!ReadString(key) || !Expect('=') || !ReadString(value) || !Expect(';')) {
                break;
            }
            table.Add(key, value);
        }
        return m_Problem == nullptr ? std::string() : "line " + std::to_string(Line()) + ": " + m_Problem;
    }

private:
    bool Fail(const char* problem) {
        m_Problem = problem;
        return false;
    }
    [[nodiscard]] std::size_t Line() const {
        const auto last = m_Text.begin() + static_cast<std::ptrdiff_t>(std::min(m_At, m_Text.size()));
        return 1 + static_cast<std::size_t>(std::count(m_Text.begin(), last, '\n'));
    }
    [[nodiscard]] bool IsAt(std::string_view token) const {
        return token.size() <= m_Text.size() - m_At &&
               std::equal(token.begin(), token.end(), m_Text.begin() + static_cast<std::ptrdiff_t>(m_At));
    }

    /// False at a comment without end.
    bool SkipBlanks() {
        for (; m_At < m_Text.size(); ++m_At) {
            if (IsAt("//")) {
                while (m_At + 1 < m_Text.size() && m_Text[m_At + 1] != '\n' && m_Text[m_At + 1] != '\r') {
                    ++m_At;
                }
            } else if (IsAt("/*")) {
                std::size_t end = m_At + 3;
                while (end < m_Text.size() && !(m_Text[end] == '/' && m_Text[end - 1] == '*')) {
                    ++end;
                }
                if (end >= m_Text.size()) {
                    return Fail("a comment without end");
                }
                m_At = end;
            } else if (!IsBlank(m_Text[m_At])) {
                break;
            }
        }
        return true;
    }

    bool Expect(char token) {
        if (!SkipBlanks()) {
            return false;
        }
        if (!IsAt({&token, 1})) {
            return Fail(token == '=' ? "no \"=\" behind a key" : "no \";\" behind a value");
        }
        ++m_At;
        return true;
    }

    bool ReadString(std::vector<UniChar>& string) {
        string.clear();
        if (!SkipBlanks()) {
            return false;
        }
        if (IsAt("\"")) {
            return ReadQuoted(string);
        }
        const auto first = m_Text.begin() + static_cast<std::ptrdiff_t>(m_At);
        string.assign(first, std::find_if_not(first, m_Text.end(), IsWord));
        m_At += string.size();
        return !string.empty() || Fail("neither a string in quotes nor a word");
    }

    bool ReadQuoted(std::vector<UniChar>& string) {
        for (std::size_t at = m_At + 1; at < m_Text.size(); ++at) {
            if (m_Text[at] == '"') {
                m_At = at + 1;
                return true;
            }
            if (m_Text[at] != '\\') {
                string.push_back(m_Text[at]);
            } else if (at + 1 == m_Text.size()) {
                break;
            } else if (!ReadEscape(++at, string)) {
                return false;
            }
        }
        return Fail("a string without closing quotes");  // with m_At, and so the line, at its beginning
    }

    /// Reads the characters after a backslash, and leaves `at` at the last one.
    bool ReadEscape(std::size_t& at, std::vector<UniChar>& string) {
        constexpr std::size_t kDigits = 4;
        const UniChar letter = m_Text[at];
        if (letter != 'U') {
            string.push_back(letter == 'n' ? '\n' : letter == 't' ? '\t' : letter == 'r' ? '\r' : letter);
            return true;
        }
        int unit = 0;
        for (const std::size_t last = at + kDigits; at < last;) {
            const int digit = ++at < m_Text.size() ? DigitValue(m_Text[at]) : -1;
            if (digit < 0) {
                m_At = at;
                return Fail("\"\\U\" without four hexadecimal digits");
            }
            unit = unit << 4 | digit;
        }
        string.push_back(static_cast<UniChar>(unit));
        return true;
    }

    Units m_Text;
    std::size_t m_At = 0;
    const char* m_Problem = nullptr;
};

}  // namespace

std::string ReadTextTable(Units text, StringTable& table) { return Parser(text).Parse(table); }

}  // namespace Lum::Internal::CoreFoundation
