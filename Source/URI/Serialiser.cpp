// Prints a record as text, as stored or unescaped, and compares URIs by what they print.
#include <compare>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/Lengths.h"
#include "Source/Base/ShortCopies.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Scheme.h"

namespace Lum {

using namespace Internal;

namespace {

/// Adds up how much Write will write.
struct Measure {
    std::uint64_t size = 0;
    void operator()(std::string_view piece) noexcept { size += piece.size(); }
};

/// Writes pieces one after the other.
struct Write {
    char* to;
    void operator()(std::string_view piece) noexcept { to = CopyBytes(to, piece); }
};

/// The components in the form in which they are to be printed.
struct Components {
    std::string_view scheme;
    std::string_view username;
    std::string_view password;
    std::string_view host;
    std::string_view port;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;
    std::string_view nonHierarchical;
};

enum class Form { NonHierarchical, Relative, WithoutAuthority, WithAuthority };

/// Calls `out` with the pieces of the text in their order.
template <class Out>
void Emit(Form form, const Components& parts, Out& out) noexcept {
    if (form == Form::NonHierarchical) {
        out(parts.scheme);
        out(":");
        out(parts.nonHierarchical);
    } else {
        if (form != Form::Relative && !parts.scheme.empty()) {
            out(parts.scheme);
            out(":");
        }
        if (form == Form::WithAuthority) {
            out("//");
            if (!parts.username.empty()) {
                out(parts.username);
                if (!parts.password.empty()) {
                    out(":");
                    out(parts.password);
                }
                out("@");
            }
            out(parts.host);
            if (!parts.port.empty()) {
                out(":");
                out(parts.port);
            }
        }
        out(parts.path);
    }
    if (!parts.query.empty()) {
        out("?");
        out(parts.query);
    }
    if (!parts.fragment.empty()) {
        out("#");
        out(parts.fragment);
    }
}

std::string Print(Form form, const Components& parts) {
    Measure measure;
    Emit(form, parts, measure);
    std::string text;
    ReserveFor(text, measure.size);
    text.resize(static_cast<std::size_t>(measure.size));
    Write write{text.data()};
    Emit(form, parts, write);
    return text;
}

}  // namespace

std::string URI::ToString(bool unescaped) const {
    Form form = Form::NonHierarchical;
    if (IsHierarchical()) {
        // Without a host only a "file" URI prints its "//", so that "file:///C|/dir" survives.
        const auto needsSlashes = [this] { return !m_Authority.empty() || IsOfType(kFileScheme); };
        form = m_IsRelative ? Form::Relative : (needsSlashes() ? Form::WithAuthority : Form::WithoutAuthority);
    }
    if (!unescaped) {
        return Print(form, {m_Scheme, m_Username, m_Password, m_Authority, m_ServerPort, m_Path, m_Query, m_Fragment,
                            m_NonHierarchical});
    }
    return Print(form, {GetScheme(), GetUsername(), GetPassword(), GetAuthority(), m_ServerPort, GetPath(),
                        GetQuery(true), GetFragment(), GetNonHierarchical()});
}

std::string URI::ToStringUTF8() const { return UnescapeText(ToString(false), true); }

std::string URI::ToStringUTF8Escaped() const { return FastEscapeChars(ToString(false), URIhighBytesExcludedBitMap); }

int URI::Compare(const std::string& a, const std::string& b, bool caseSensitive) {
    return caseSensitive ? a.compare(b) : CompareIgnoringAsciiCase(a, b);
}

bool URI::operator==(const char* text) const { return ToString(false) == (text == nullptr ? "" : text); }
bool URI::operator==(StringProxy text) const { return ToString(false) == text.m_Text; }
bool URI::operator==(const URI& other) const { return ToString(false) == other.ToString(false); }

std::strong_ordering URI::operator<=>(const char* text) const {
    return ToString(false).compare(text == nullptr ? "" : text) <=> 0;
}
std::strong_ordering URI::operator<=>(StringProxy text) const { return ToString(false).compare(text.m_Text) <=> 0; }
std::strong_ordering URI::operator<=>(const URI& other) const {
    return ToString(false).compare(other.ToString(false)) <=> 0;
}

std::ostream& operator<<(std::ostream& out, const URI& uri) { return out << uri.ToString(false); }

std::ostream& operator<<(std::ostream& out, const URI::StringProxy& text) {
    return out << static_cast<const std::string&>(text);
}

}  // namespace Lum
