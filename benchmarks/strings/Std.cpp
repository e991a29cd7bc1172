// std::u16string, with loops for what it has not: plain ones, as its users write them. Text is formatted
// by snprintf and widened.
#include <cstdio>
#include <string>
#include <string_view>

#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

// One unit at a time, as compilers make of these loops where they do not go as far as -O3.
#ifdef __clang__
#define PLAINLY
#else
#define PLAINLY __attribute__((optimize("no-tree-vectorize")))
#endif

struct StdOps {
    using Text = std::u16string;

    static Text From(std::u16string_view units) { return Text(units); }
    static Units ToUnits(const Text& text) { return text; }
    static void Append(Text& text, char16_t unit) { text += unit; }
    static void Append(Text& text, const Text& piece) { text += piece; }
    static std::size_t Find(const Text& text, const Text& wanted) { return text.find(wanted); }
    static std::size_t FindUnit(const Text& text, char16_t unit) { return text.find(unit); }
    static Text Replaced(const Text& text, const Text& from, const Text& to) {
        Text result;
        std::size_t start = 0;
        for (std::size_t at = 0; (at = text.find(from, start)) != Text::npos; start = at + from.size()) {
            result.append(text, start, at - start).append(to);
        }
        return result.append(text, start);
    }
    static Text Mid(const Text& text, int first, int count) {
        return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
    }
    PLAINLY static void MakeUpper(Text& text) {
        for (char16_t& unit : text) {
            unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
        }
    }
    PLAINLY static void MakeLower(Text& text) {
        for (char16_t& unit : text) {
            unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
        }
    }
    static bool AreEqual(const Text& a, const Text& b) { return a == b; }
    static int Compare(const Text& a, const Text& b) { return a.compare(b); }
    template <class Visit>
    static void Tokenise(const Text& text, char16_t delimiter, Visit visit) {
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find(delimiter, start), text.size());
            Text token = text.substr(start, end - start);
            visit(token);
            start = end + 1;
        }
    }
    static void BeforeItGoes(Text&) {}
};

std::u16string Format(const FormatArguments& arguments) {
    char buffer[128];
    const int size = std::snprintf(buffer, sizeof buffer, "%d %s %f", arguments.number, arguments.narrow.c_str(),
                                   arguments.fraction);
    return std::u16string(buffer, buffer + size);
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddComingAndGoing<StdOps>(name, inputs);
    AddStaying<StdOps>(name, inputs);
    AddCase(kFormat + kLocked, name, inputs.formats, Format);
}

const AddSubject add{{"std::u16string", AddCases}};

}  // namespace
}  // namespace Bench::Strings
