// QString.
#include <QString>
#include <utility>

#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

struct QtOps {
    using Text = QString;

    static Text From(std::u16string_view units) {
        return Text(reinterpret_cast<const QChar*>(units.data()), static_cast<qsizetype>(units.size()));
    }
    static Units ToUnits(const Text& text) { return text.toStdU16String(); }
    static void Append(Text& text, char16_t unit) { text += QChar(unit); }
    static void Append(Text& text, const Text& piece) { text += piece; }
    static qsizetype Find(const Text& text, const Text& wanted) { return text.indexOf(wanted); }
    static qsizetype FindUnit(const Text& text, char16_t unit) { return text.indexOf(QChar(unit)); }
    static Text Replaced(const Text& text, const Text& from, const Text& to) {
        Text result = text;
        result.replace(from, to);
        return result;
    }
    static Text Mid(const Text& text, int first, int count) { return text.mid(first, count); }
    static void MakeUpper(Text& text) { text = std::move(text).toUpper(); }
    static void MakeLower(Text& text) { text = std::move(text).toLower(); }
    static bool AreEqual(const Text& a, const Text& b) { return a == b; }
    static int Compare(const Text& a, const Text& b) { return a.compare(b); }
    template <class Visit>
    static void Tokenise(const Text& text, char16_t delimiter, Visit visit) {
        for (qsizetype start = 0; start < text.size();) {
            const qsizetype found = text.indexOf(QChar(delimiter), start);
            const qsizetype end = found < 0 ? text.size() : found;
            Text token = text.mid(start, end - start);
            visit(token);
            start = end + 1;
        }
    }
    static void BeforeItGoes(Text&) {}
};

QString Format(const FormatArguments& arguments) {
    return QString::asprintf("%d %s %f", arguments.number, arguments.narrow.c_str(), arguments.fraction);
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddComingAndGoing<QtOps>(name, inputs);
    AddStaying<QtOps>(name, inputs);
    AddCase(kFormat + kLocked, name, inputs.formats, Format);
}

const AddSubject add{{"QString", AddCases}};

}  // namespace
}  // namespace Bench::Strings
