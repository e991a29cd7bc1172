// Strings by number.
#include <Lum/CString.h>

#include <charconv>

bool CString::LoadString(unsigned int id) {
    char digits[16];
    const auto* const end = std::to_chars(digits, digits + sizeof digits, static_cast<int>(id)).ptr;
    unsigned short units[sizeof digits];
    int length = 0;
    for (const char* digit = digits; digit != end; ++digit) {
        units[length++] = Lum::AsUnit(*digit);
    }
    AssignCopy(length, units);
    return true;
}
