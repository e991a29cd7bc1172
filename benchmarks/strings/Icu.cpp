// ICU's UnicodeString. Case is changed by the root locale's rules.
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

struct IcuOps {
    using Text = icu::UnicodeString;

    static Text From(std::u16string_view units) { return Text(units.data(), static_cast<int32_t>(units.size())); }
    static Units ToUnits(const Text& text) { return Units(text.getBuffer(), static_cast<std::size_t>(text.length())); }
    static void Append(Text& text, char16_t unit) { text.append(unit); }
    static void Append(Text& text, const Text& piece) { text.append(piece); }
    static int32_t Find(const Text& text, const Text& wanted) { return text.indexOf(wanted); }
    static int32_t FindUnit(const Text& text, char16_t unit) { return text.indexOf(unit); }
    static Text Replaced(const Text& text, const Text& from, const Text& to) {
        Text result = text;
        result.findAndReplace(from, to);
        return result;
    }
    static Text Mid(const Text& text, int first, int count) { return Text(text, first, count); }
    static void MakeUpper(Text& text) { text.toUpper(icu::Locale::getRoot()); }
    static void MakeLower(Text& text) { text.toLower(icu::Locale::getRoot()); }
    static bool AreEqual(const Text& a, const Text& b) { return a == b; }
    static int Compare(const Text& a, const Text& b) { return a.compare(b); }
    template <class Visit>
    static void Tokenise(const Text& text, char16_t delimiter, Visit visit) {
        for (int32_t start = 0; start < text.length();) {
            const int32_t found = text.indexOf(delimiter, start);
            const int32_t end = found < 0 ? text.length() : found;
            Text token(text, start, end - start);
            visit(token);
            start = end + 1;
        }
    }
    static void BeforeItGoes(Text&) {}
};

void AddCases(const std::string& name, const Inputs& inputs) {
    AddComingAndGoing<IcuOps>(name, inputs);
    AddStaying<IcuOps>(name, inputs);
}

const AddSubject add{{"UnicodeString", AddCases}};

}  // namespace
}  // namespace Bench::Strings
