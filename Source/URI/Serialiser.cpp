// Prints a record as text, as stored or unescaped, and compares URIs by what they print.
#include <algorithm>
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
#include "Source/URI/Record.h"
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

/// Calls `out` with the pieces of the text in their order.
template <class Out>
void Emit(PrintedForm form, const PrintedParts& parts, Out& out) noexcept {
    if (form == PrintedForm::NonHierarchical) {
        out(parts.scheme);
        out(":");
        out(parts.nonHierarchical);
    } else {
        if (form != PrintedForm::Relative && !parts.scheme.empty()) {
            out(parts.scheme);
            out(":");
        }
        if (form == PrintedForm::WithAuthority) {
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

std::string Print(PrintedForm form, const PrintedParts& parts) {
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

PrintedParts URI::Access::Stored(const URI& uri) noexcept {
    return {uri.m_Scheme, uri.m_Username, uri.m_Password, uri.m_Authority,      uri.m_ServerPort,
            uri.m_Path,   uri.m_Query,    uri.m_Fragment, uri.m_NonHierarchical};
}

PrintedForm URI::Access::FormOf(const URI& uri) {
    if (!uri.IsHierarchical()) {
        return PrintedForm::NonHierarchical;
    }
    if (uri.m_IsRelative) {
        return PrintedForm::Relative;
    }
    // Without a host only a "file" URI prints its "//", so that "file:///C|/dir" survives.
    const bool needsSlashes = !uri.m_Authority.empty() || uri.IsOfType(kFileScheme);
    return needsSlashes ? PrintedForm::WithAuthority : PrintedForm::WithoutAuthority;
}

std::string URI::ToString(bool unescaped) const {
    const PrintedForm form = Access::FormOf(*this);
    if (!unescaped) {
        return Print(form, Access::Stored(*this));
    }
    return Print(form, {GetScheme(), GetUsername(), GetPassword(), GetAuthority(), m_ServerPort, GetPath(),
                        GetQuery(true), GetFragment(), GetNonHierarchical()});
}

std::string URI::ToStringUTF8() const { return UnescapeText(ToString(false), true); }

std::string URI::ToStringUTF8Escaped() const { return FastEscapeChars(ToString(false), URIhighBytesExcludedBitMap); }

std::uint64_t URI::Access::PrintedSize(const URI& uri) {
    Measure measure;
    Emit(FormOf(uri), Stored(uri), measure);
    return measure.size;
}

bool URI::Access::HaveSameComponents(const URI& a, const URI& b) noexcept {
    return a.m_IsRelative == b.m_IsRelative && a.m_IsHierarchical == b.m_IsHierarchical &&
           std::all_of(kComponents.begin(), kComponents.end(), [&](auto c) { return a.*c == b.*c; });
}

int URI::Compare(const std::string& a, const std::string& b, bool caseSensitive) {
    return caseSensitive ? a.compare(b) : CompareIgnoringAsciiCase(a, b);
}

bool URI::operator==(const char* text) const { return ToString(false) == (text == nullptr ? "" : text); }
bool URI::operator==(StringProxy text) const { return ToString(false) == text.m_Text; }
bool URI::operator==(const URI& other) const {
    if (Access::IsPlainURI(*this) && Access::IsPlainURI(other)) {
        if (Access::HaveSameComponents(*this, other)) {
            return true;
        }
        // Other components may print the same text, for one may hold what looks like a delimiter.
        if (Access::PrintedSize(*this) != Access::PrintedSize(other)) {
            return false;
        }
    }
    return ToString(false) == other.ToString(false);
}

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
