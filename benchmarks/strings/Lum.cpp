// Lum's own CString, with and without a lock ahead of a string's end.
#include <Lum/CString.h>

#include "Family.h"
#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

template <bool Locks>
struct LumOps {
    using Text = CString;

    static Text From(std::u16string_view units) { return Text(units.data(), static_cast<int>(units.size())); }
    static Units ToUnits(const Text& text) { return Units(std::u16string_view(text)); }
    template <class Piece>
    static void Append(Text& text, const Piece& piece) {
        const unsigned short* const before = text;
        text += piece;
        // The buffer that is outgrown next goes back if it is locked by then.
        if (Locks && text.GetAsUniCharStr() != before) {
            text.LockBuffer();
        }
    }
    static int Find(const Text& text, const Text& wanted) { return text.Find(wanted); }
    static int FindUnit(const Text& text, char16_t unit) { return text.Find(unit); }
    static Text Replaced(const Text& text, const Text& from, const Text& to) {
        Text result = text;
        result.Replace(from, to);
        return result;
    }
    static Text Mid(const Text& text, int first, int count) { return text.Mid(first, count); }
    static void MakeUpper(Text& text) { text.MakeUpper(); }
    static void MakeLower(Text& text) { text.MakeLower(); }
    static bool AreEqual(const Text& a, const Text& b) { return a == b; }
    static int Compare(const Text& a, const Text& b) { return a.Compare(b); }
    template <class Visit>
    static void Tokenise(const Text& text, char16_t delimiter, Visit visit) {
        const char16_t delimiters[] = {delimiter, 0};
        int position = 0;
        while (true) {
            Text token = text.Tokenize(delimiters, position);
            if (position == -1) {
                break;
            }
            visit(token);
        }
    }
    static void BeforeItGoes(Text& text) {
        if (Locks) {
            text.LockBuffer();
        }
    }
};

template <class Ops>
void AddFormat(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    AddPreparedCase(
        kFormat + rows.suffix, subject, inputs.formats, [](const FormatArguments& arguments) { return &arguments; },
        [](const FormatArguments* arguments) {
            CString text;
            text.Format(u"%d %s %f", arguments->number, arguments->wide.c_str(), arguments->fraction);
            Ops::BeforeItGoes(text);
            return text;
        },
        rows.Counts(), rows.Iterations(8));
}

void AddCases(const std::string& name, const Inputs& inputs) {
    using Locking = LumOps<true>;
    using Keeping = LumOps<false>;
    const Rows kept{kKept, true};
    AddComingAndGoing<Locking>(name, inputs);
    AddFormat<Locking>(name, inputs, {});
    AddStaying<Locking>(name, inputs);
    AddComingAndGoing<Keeping>(name, inputs, kept);
    AddFormat<Keeping>(name, inputs, kept);
}

const AddSubject add{{kMeasured, AddCases}};

}  // namespace
}  // namespace Bench::Strings
