// The types of other libraries: std::filesystem::path, and ICU's strings.
#include <iostream>
#include <string>

#include <Lum/Bridges/Filesystem.h>
#include <Lum/Bridges/ICU.h>

int main() {
    // A file of this machine, to be opened.
    const Lum::URI uri = Lum::FromFilePath("/home/me/a b#1.txt");
    std::cout << uri << ' ' << Lum::ToFilePath(uri).string() << '\n';

    // A path as other systems write it.
    for (const Lum::PathStyle style : {Lum::PathStyle::Mac, Lum::PathStyle::Unix, Lum::PathStyle::Win}) {
        std::cout << Lum::ToPath(Lum::URI("file:///C|/dir/x"), style).string() << ' ';
    }
    std::cout << Lum::FromPath("C:\\dir\\x", Lum::PathStyle::Win) << '\n';

    // ICU's upper case, which knows more than ASCII.
    const CString street(u"stra\u00DFe");
    icu::UnicodeString upper = Lum::ToUnicodeString(street);
    upper.toUpper();
    std::cout << Lum::FromUnicodeString(upper) << ' ' << Lum::AliasUnicodeString(street).length() << '\n';
}
