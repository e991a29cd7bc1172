// Qt's types: QString and QUrl.
#include <iostream>

#include <Lum/Bridges/Qt.h>

int main() {
    const CString text(u"caf\u00E9");
    std::cout << Lum::ToQString(text).toUpper().toStdString() << ' ' << Lum::ViewAsQString(text).size() << ' '
              << Lum::FromQString(u"from Qt") << '\n';

    // Only what both read in the same way becomes the other.
    const QUrl url = Lum::ToQUrl(Lum::URI("http://me@example.org/a%20b?x=1#top"));
    std::cout << url.fragment().toStdString() << ' ' << Lum::ToQUrl(Lum::URI("http://h:port/")).isValid() << ' '
              << Lum::FromQUrl(QUrl("https://example.org/c")) << '\n';
}
