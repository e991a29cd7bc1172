// Searches that a plain one makes quadratic, and appending, which by design is.
#include <Lum/CString.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Case.h"
#include "strings/StringsFamily.h"

namespace Bench::Strings {
namespace {

CString From(const Units& units) { return CString(units.c_str(), static_cast<int>(units.size())); }

/// Searches a text of "a", with a "b" after each `gap` of them where that is not 0, for what `wanted` makes
/// of half the text's size.
void AddSearch(const std::string& what, std::size_t gap, Units (*wanted)(std::size_t half)) {
    const std::vector<std::size_t> sizes{512, 4'096, 32'768, 262'144};
    AddGrowthCases("strings/growth of finding " + what, sizes, [gap, wanted](std::size_t size) {
        Units units(size, u'a');
        for (std::size_t i = gap; gap != 0 && i < size; i += gap + 1) {
            units[i] = u'b';
        }
        return [text = From(units), sought = From(wanted(size / 2))] { return text.Find(sought); };
    });
}

}  // namespace

void AddGrowth() {
    AddSearch("aaa...b in aaa...", 0, [](std::size_t half) { return Units(half - 1, u'a') + u'b'; });
    AddSearch("baaa... in aaa...", 0, [](std::size_t half) { return u'b' + Units(half - 1, u'a'); });
    AddSearch("aaa...baaa...baaa... in aaa...", 0, [](std::size_t half) {
        const Units third(half / 3, u'a');
        return third + u'b' + third + u'b' + third;
    });
    AddSearch("aaa... in aaa...b, repeated", 200, [](std::size_t half) { return Units(half, u'a'); });
    AddGrowthCases("strings/growth of appending 16 units", {512, 4'096, 32'768}, [](std::size_t size) {
        return [size, piece = From(u"sixteen units : ")] {
            CString text;
            for (std::size_t i = 0; i < size; i += 16) {
                const unsigned short* const before = text;
                text += piece;
                if (text.GetAsUniCharStr() != before) {
                    text.LockBuffer();
                }
            }
            return text.GetLength();
        };
    });
}

}  // namespace Bench::Strings
