// The locale of this process: the parts of a POSIX locale name such as "ja_JP.eucJP" (POSIX.1-2017, 8.2).
// Which script and which text encoding the parts stand for is decided by Platform/Script and
// Platform/TextEncoding.
#pragma once

#include <string>
#include <string_view>

namespace Lum::Internal::Host {

struct Locale {
    /// "ja" and "JP". Empty for the locales "C" and "POSIX", where a part is missing, and where it has other
    /// characters than ASCII letters and digits: the parts become names of folders.
    std::string language, territory;
    /// "eucJP", as it is written; empty where none is named.
    std::string codeSet;
};

/// Reads a name LANGUAGE[_TERRITORY][.CODESET][@MODIFIER]. The modifier is ignored.
Locale ReadLocale(std::string_view posixName);

/// The locale that was set. Without one, the locale named by LC_ALL, LC_CTYPE or LANG, in that order.
/// May be called from static initialisers and destructors.
const Locale& CurrentLocale();
/// Sets the current locale, while no other thread reads it.
void SetCurrentLocale(std::string_view posixName);

}  // namespace Lum::Internal::Host
