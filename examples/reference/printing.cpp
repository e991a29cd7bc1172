// How values read in messages: as text, in formats, and in the messages of failed tests.
#include <iostream>

#include <Lum/Print.h>

int main() {
    const Lum::URI uri("ftp://me:secret@h/x");
    std::cout << Lum::PrintedText(uri) << ' ' << Lum::PrintedText(CString(u"caf\u00E9")) << ' '
              << Lum::PrintedText(Lum::TimeStamp()) << ' ' << Lum::PrintedText(Lum::kRelationChild) << ' '
              << Lum::PrintedText(Lum::ConversionStatus::kIncomplete) << ' '
              << Lum::PrintedText(Lum::ConvertText("a\xFF", "utf-8", "latin1")) << '\n';
    PrintTo(uri, &std::cout);  // GoogleTest calls this.
    std::cout << '\n';
}
