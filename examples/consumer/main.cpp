// Prints what a reference means on a page, and the page's title, which comes in another encoding.
#include <iostream>

#include <Lum/Lum.h>

int main() {
    const Lum::URI page("HTTP://Host/articles/2026/index.html");
    Lum::URI image("../images/map%201.png");
    image.MakeAbsoluteURI(page);
    std::cout << image << '\n' << image.GetPath() << '\n';
    std::cout << Lum::Transcoder::EncodingToUTF8("\x93\xFA\x96\x7B", "shift_jis") << '\n';
}
