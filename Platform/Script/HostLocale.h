// What a POSIX locale name, "ja_JP.eucJP" say, tells about the host: its script and its code set.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/Script/Script.h"

namespace HostLocale {

struct Locale {
    ScriptCode script;
    /// The TextEncoding of the code set: UTF-8 for "C", for none, and for one that is not known.
    std::uint32_t codeSet;
    /// "ja" and "JP"; empty for "C", for none, and for what is not letters and digits.
    std::string language{}, territory{};
};

/// Reads a name LANGUAGE[_TERRITORY][.CODESET][@MODIFIER]; languages other than Japanese, Korean and
/// Chinese are Roman, as is what cannot be read.
Locale Read(std::string_view posixName);

/// The locale that was set, or else the one that LC_ALL, LC_CTYPE or LANG names.
const Locale& Current();

}  // namespace HostLocale
