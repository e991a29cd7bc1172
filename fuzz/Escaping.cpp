// Property: escaping and then unescaping gives the text back, whatever stands around it; unescaping
// never lengthens a text, and what stands before a text does not change how it is read.
#include <string>

#include <Lum/URI.h>

#include "Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Require(Lum::URI::Unescape(Lum::URI::Escape(text), false) == text);
    Require(Lum::URI::Unescape(Lum::URI::EscapeChars(text, "%"), false) == text);
    const std::string decoded = Lum::URI::Unescape(text, false);
    Require(decoded.size() <= size);
    Require(Lum::URI::Unescape("%41" + text, false) == "A" + decoded);
    const std::string highDecoded = Lum::URI::Unescape(text, true);
    Require(highDecoded.size() <= size && (highDecoded == text || decoded != text));
    if (size < 64) {
        char byte = 0;
        const int taken = Lum::URI::ParseHex(text, byte);
        Require(taken == 1 || (taken == 3 && size == 3));
    }
    return 0;
}
