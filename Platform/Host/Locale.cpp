// Splits locale names and keeps the current locale.
#include "Platform/Host/Locale.h"

#include <algorithm>
#include <cstdlib>

namespace Lum::Internal::Host {
namespace {

/// Removes `mark` and what follows it from `name`, and returns what follows it.
std::string_view CutAt(std::string_view& name, char mark) {
    const std::size_t at = name.find(mark);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = name.substr(at + 1);
    name = name.substr(0, at);
    return rest;
}

/// The name, or "" if it has characters that a part of a path must not have.
std::string FolderName(std::string_view name) {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    });
    return std::string(isPlain ? name : std::string_view());
}

std::string_view EnvironmentLocale() {
    for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (const char* const value = std::getenv(variable); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

/// A local static object works in static initialisers too. It is never destroyed, so that static
/// destructors can still read it.
Locale& Stored() {
    static auto* const locale = new Locale(ReadLocale(EnvironmentLocale()));
    return *locale;
}

}  // namespace

Locale ReadLocale(std::string_view posixName) {
    CutAt(posixName, '@');
    const std::string_view codeSet = CutAt(posixName, '.');
    const std::string_view territory = CutAt(posixName, '_');
    const bool isLanguage = posixName != "C" && posixName != "POSIX";
    return {isLanguage ? FolderName(posixName) : std::string(), FolderName(territory), std::string(codeSet)};
}

const Locale& CurrentLocale() { return Stored(); }

void SetCurrentLocale(std::string_view posixName) { Stored() = ReadLocale(posixName); }

}  // namespace Lum::Internal::Host
