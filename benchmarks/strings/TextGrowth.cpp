// The operations that walk a string, at 1 KB, 32 KB and 1 MB of units; the figure is for one unit.
//
// Every string is locked before it goes, so that its buffer goes back.
#include <Lum/CString.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Case.h"
#include "strings/StringsFamily.h"

namespace Bench::Strings {
namespace {

const std::vector<std::size_t> kUnits{512, 16'384, 524'288};

/// Words with a comma behind every fourth.
CString Words(std::size_t size) {
    Units units;
    for (std::size_t i = 0; units.size() < size; ++i) {
        units += i % 4 == 3 ? u"harbour, " : i % 4 == 2 ? u"of the " : u"north ";
    }
    return CString(units.data(), static_cast<int>(size));
}

/// Tells `text`'s length and lets it go.
int Gone(CString& text) {
    text.LockBuffer();
    return text.GetLength();
}

void Add(const std::string& operation, int (*call)(const CString& text)) {
    AddGrowthCases("strings/units of " + operation, kUnits,
                   [call](std::size_t size) { return [text = Words(size), call] { return call(text); }; });
}

/// For what changes a copy of the text.
void AddChange(const std::string& operation, void (*change)(CString& text)) {
    AddGrowthCases("strings/units of " + operation, kUnits, [change](std::size_t size) {
        return [text = Words(size), change] {
            CString copy = text;
            copy.LockBuffer();
            change(copy);
            return Gone(copy);
        };
    });
}

void AddQuestions() {
    Add("finding a unit", [](const CString& text) { return text.Find(u'§'); });
    Add("finding a unit backwards", [](const CString& text) { return text.ReverseFind(u'§'); });
    Add("finding one of a set", [](const CString& text) { return text.FindOneOf(u"!?§"); });
    Add("finding a text", [](const CString& text) { return text.Find(u"northern"); });
    Add("comparing, any case", [](const CString& text) { return text.CompareNoCase(text.GetAsUniCharStr()); });
    Add("hashing", [](const CString& text) { return static_cast<int>(std::hash<CString>()(text)); });
    Add("counting parts", [](const CString& text) { return text.GetPartCount(','); });
    Add("converting to UTF-8", [](const CString& text) { return static_cast<int>(text.ToUTF8().size()); });
}

void AddPieces() {
    Add("taking the middle", [](const CString& text) {
        CString part = text.Mid(1, text.GetLength() - 2);
        return Gone(part);
    });
    Add("taking a span", [](const CString& text) {
        CString part = text.SpanExcluding(u"!?§");
        return Gone(part);
    });
    Add("taking the last part", [](const CString& text) {
        CString part = text.GetLastPart(';');
        return Gone(part);
    });
    Add("joining", [](const CString& text) {
        CString joined = text + text;
        return Gone(joined);
    });
    Add("formatting", [](const CString& text) {
        CString made;
        made.Format(u"%s", text.GetAsUniCharStr());
        return Gone(made);
    });
    Add("cutting into tokens", [](const CString& text) {
        int position = 0, count = 0;
        for (; position != -1; ++count) {
            CString token = text.Tokenize(u" ,", position);
            token.LockBuffer();
        }
        return count;
    });
    AddGrowthCases("strings/units of converting from UTF-8", kUnits, [](std::size_t size) {
        return [utf8 = Words(size).ToUTF8()] {
            CString text = CString::FromUTF8(utf8);
            return Gone(text);
        };
    });
}

void AddChanges() {
    AddChange("copying", [](CString&) {});
    AddChange("replacing a unit", [](CString& text) { text.Replace(u'o', u'0'); });
    AddChange("replacing a text", [](CString& text) { text.Replace(u"o", u"oo"); });
    AddChange("removing a unit", [](CString& text) { text.Remove(u'o'); });
    AddChange("upper case", [](CString& text) { text.MakeUpper(); });
    AddChange("reversing", [](CString& text) { text.MakeReverse(); });
    AddChange("inserting", [](CString& text) { text.Insert(3, u"north"); });
    AddChange("deleting", [](CString& text) { text.Delete(3, 5); });
    AddChange("trimming", [](CString& text) { text.TrimLeft(u"north, haburfe"); });
}

}  // namespace

void AddTextGrowth() {
    AddQuestions();
    AddPieces();
    AddChanges();
}

}  // namespace Bench::Strings
