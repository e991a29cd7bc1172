// Prints values with {fmt}, or with std::format where that is not there and the standard library has it, and as a
// test's message would.
#include <iostream>

#if __has_include(<fmt/format.h>) && !defined(LUM_WITHOUT_FMT)
#include <fmt/format.h>
namespace formats = fmt;
#else
#include <format>
namespace formats = std;
#endif

#include <Lum/Print.h>

int main() {
    const Lum::URI uri("ftp://me:secret@h/x");
    std::cout << formats::format("{} {:r} [{:>20.5}]\n", uri, uri, uri) << formats::format("{:*<20r}\n", uri)
              << formats::format("{} {:.10}\n", CString(u"caf\u00E9"), Lum::TimeStamp(2008, 2, 29, 12, 30, 45, 5))
              << formats::format("{} {}\n", Lum::kRelationParent, Lum::ConvertText("a\xFF", "utf-8", "latin1"));
    PrintTo(CString(u"text"), &std::cout);
    PrintTo(Lum::ConversionResult{Lum::ConversionStatus::kDone, 1, 2}, &std::cout);
    std::cout << '\n';
}
