// A 16-bit text read: made, compared, searched, cut into parts, formatted, and printed.
#include <algorithm>
#include <cstdarg>
#include <functional>
#include <iostream>
#include <string>

#include <Lum/CString.h>

namespace {

void Make() {
    const CString name(u"caf\u00E9"), copy(name), stars('*', 3), cut(u"abcdef", 3);
    CString other = CString::FromUTF8("na\xC3\xAFve");
    std::cout << name << ' ' << stars << ' ' << cut << ' ' << other.ToUTF8() << ' ' << other.GetLength() << " units "
              << CString().IsEmpty() << " shared " << (copy.GetAsUniCharStr() == name.GetAsUniCharStr()) << '\n';
    CString next(u"next");
    swap(other, next);
    std::cout << other << ' ' << AfxGetEmptyString().GetLength() << ' ' << AfxIsValidString(u"x", -1)
              << (AfxGetEmptyString() == &afxChNil) << '\n';
    PrintTo(name, &std::cout);  // As a failed test shows it.
    std::cout << '\n';
}

// The units of a text, one by one, by algorithms, and as the library's two unit types.
void Units() {
    const CString text(u"a-b");
    const CString::value_type dash = text.GetAt(1);
    CString::const_iterator place = std::find(text.begin(), text.end(), dash);
    const CString::iterator first = text.begin();
    const unsigned short* const units = text;
    const std::u16string_view view = text;
    std::cout << dash << ' ' << place - first << ' ' << text[2] << ' ' << units[0] << ' ' << view.size() << '\n';

    char16_t buffer[] = u"ab";
    Lum::AsUnits(buffer)[0] = Lum::AsUnit('A');
    const Lum::UnitPointer argument = buffer;  // What operations take: units of either type.
    std::cout << CString(Lum::AsChar16(static_cast<const unsigned short*>(argument))) << '\n';
}

void Compare() {
    const CString a(u"Readme"), b(u"README");
    std::cout << a.Compare(b) << a.CompareNoCase(b) << ' ' << (a == u"Readme") << (a < b) << (a > b) << (a <= b)
              << (a >= b) << ((a <=> u"S") < 0) << (std::hash<CString>{}(a) == std::hash<CString>{}(CString(a)))
              << '\n';
}

// The fields of a line of a log.
void Search() {
    const CString line(u"2008-02-29 12:30 WARN  disk: 97% full");
    const int level = line.Find(u"WARN"), colon = line.Find(':', level);
    std::cout << line.Left(10) << '|' << line.Mid(level, 4) << '|' << line.Mid(colon + 2) << '|' << line.Right(4) << '|'
              << line.RightMost(24) << '|' << line.ReverseFind(' ') << '|' << line.FindOneOf(u"%:") << '|'
              << line.SpanIncluding(u"0123456789-") << '|' << line.SpanExcluding(u" ") << '\n';

    int position = 0;
    for (CString word = line.Tokenize(u" :", position); position != -1; word = line.Tokenize(u" :", position)) {
        std::cout << '[' << word << ']';
    }
    const CString path(u"usr:share:doc:lum");
    std::cout << '\n'
              << path.GetPartCount(':') << ' ' << path.GetPart(':', 1) << ' ' << path.GetLastPart(':') << ' '
              << path.GetPartRange(':', 1, 3) << '\n';
}

// One text of arguments that came in as a list.
CString Message(const char16_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    return text;
}

void Format() {
    const CString file(u"a.txt");
    CString line;
    line.Format(u"%2$d%% of %1$s: %3$.1f MB", file.GetAsUniCharStr(), 97, 12.34);
    std::cout << line << ", " << Message(u"%05d %x", 42, 255) << '\n';
    line.FormatMessage(u"%1 changes nothing");  // Kept for programs that call it.
    std::cout << line << ' ' << CString(u" 42 apples").GetIntValue() << ' ' << CString(u"2.5e3").GetDoubleValue()
              << '\n';
}

}  // namespace

int main() {
    Make();
    Units();
    Compare();
    Search();
    Format();
}
