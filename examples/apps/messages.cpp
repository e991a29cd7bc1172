// A program's messages in the user's language: looked up by number, with the arguments put in where the translator
// wants them.
//
// Usage: messages FOLDER LOCALE <LINES. A line is a number and up to two arguments, each a number or a word.
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include <Lum/CString.h>
#include <Lum/Platform.h>

namespace {

// Puts the arguments in the places of "%1" and "%2", and of a lone "%d" or "%s".
CString Filled(CString message, const std::string& first, const std::string& second) {
    for (const char16_t* place : {u"%1", u"%d", u"%s"}) {
        message.Replace(place, CString::FromUTF8(first));
    }
    message.Replace(u"%2", CString::FromUTF8(second));
    return message;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: messages FOLDER LOCALE\n";
        return 2;
    }
    Lum::Platform::SetLocale(argv[2]);
    Lum::Platform::SetMainBundle(argv[1]);
    if (const std::string reason = Lum::Platform::ExplainStringTable(""); !reason.empty()) {
        std::cerr << reason;  // For whoever wrote the table; the numbers are printed then.
    }
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        unsigned int number = 0;
        std::string first, second;
        words >> number >> first >> second;
        CString message;
        message.LoadString(number);
        std::cout << number << ": " << Filled(message, first, second) << '\n';
    }
}
