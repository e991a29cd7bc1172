// Every operation that walks a string, on texts, needles and sets that a careless version of it makes quadratic.
// The figure is for one unit of each text.
#include <Lum/CString.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Case.h"
#include "strings/StringsFamily.h"

namespace Bench::Strings {
namespace {

/// `call` gets a text of a pattern's repetitions and one of half the length that ends otherwise.
void Add(const std::string& operation, void (*call)(CString& text, const CString& half)) {
    AddGrowthCases("strings/worst of " + operation, {512, 16'384, 131'072}, [call](std::size_t size) {
        std::vector<Units> texts, halves;
        for (const Units pattern :
             {u"a", u"ab", u"aab", u"abaab", u",", u" ", u"9", u"-", u"0.", u"é", u"😀", u"\xD800", u"%%", u"%q"}) {
            Units text;
            while (text.size() < size) {
                text += pattern;
            }
            texts.push_back(text);
            halves.push_back(text.substr(0, size / 2) + u'b');
        }
        return [texts, halves, call] {
            for (std::size_t i = 0; i < texts.size(); ++i) {
                CString text(texts[i]), half(halves[i]);
                call(text, half);
                half.LockBuffer();
                text.LockBuffer();
            }
            return texts.size();
        };
    });
}

void Use(int value) { benchmark::DoNotOptimize(value); }

/// Of a string that then goes.
void Drop(CString part) {
    part.LockBuffer();
    Use(part.GetLength());
}

}  // namespace

void AddWorstGrowth() {
    Add("searching", [](CString& text, const CString& half) {
        Use(text.Find(half) + text.CompareNoCase(half) + text.Compare(half));
        Use(_mbsstr(text.GetAsUniCharStr(), half) != nullptr);
    });
    Add("sets", [](CString& text, const CString& half) {
        Use(text.FindOneOf(half));
        Drop(text.SpanIncluding(half));
        Drop(text.SpanExcluding(half));
        Drop(half.SpanExcluding(CString(text.GetLength() / 2, u'\x1234')));
    });
    Add("trimming a set", [](CString& text, const CString& half) {
        text.TrimLeft(half);
        text.TrimRight(half);
        text.Trim();
    });
    Add("tokens", [](CString& text, const CString& half) {
        for (int position = 0; position != -1;) {
            Drop(text.Tokenize(u",a ", position));
        }
        for (int position = 0; position != -1;) {
            Drop(text.Tokenize(half, position));
        }
    });
    Add("parts", [](CString& text, const CString& half) {
        for (const CString& delimiter : {CString(u"a"), CString(u","), half}) {
            const int count = text.GetPartCount(delimiter);
            Drop(text.GetPart(delimiter, count - 1));
            Drop(text.GetLastPart(delimiter));
            Drop(text.GetPartRange(delimiter, count / 2, count + 1));
        }
    });
    Add("replacing", [](CString& text, const CString& half) {
        text.Replace(half, u"x");
        text.Replace(u"a", u"aa");
        text.LockBuffer();
        text.Replace(u"aa", u"b");
        text.Remove('b');
    });
    Add("numbers",
        [](CString& text, const CString& half) { Use(text.GetIntValue() + static_cast<int>(half.GetDoubleValue())); });
    Add("formats", [](CString& text, const CString& half) {
        CString format(text);
        text.Format(u"%s%S", half.GetAsUniCharStr(), half.ToUTF8().c_str());
        text.LockBuffer();
        format.Format(format.GetAsUniCharStr());
        format.LockBuffer();
    });
    AddGrowthCases("strings/worst of formats by position", {64, 512, 4'096}, [](std::size_t size) {
        Units format;
        for (std::size_t i = 0; i < size; ++i) {
            format += u"%1$d";
        }
        return [format] {
            CString text;
            text.Format(format.c_str(), 1);
            text.LockBuffer();
            return text.GetLength();
        };
    });
}

}  // namespace Bench::Strings
