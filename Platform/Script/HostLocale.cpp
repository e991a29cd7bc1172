// Reads locale names (POSIX.1-2017, 8.2) and keeps the one in force.
#include "Platform/Script/HostLocale.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include <Lum/Platform.h>

#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

constexpr TextEncoding kUtf8 = 0x08000100;

struct LocaleScript {
    std::string_view language;
    /// Empty for every territory that has no row of its own.
    std::string_view territory;
    ScriptCode script;
};

constexpr LocaleScript kScripts[] = {
    {"ja", "", smJapanese},      {"ko", "", smKorean},        {"zh", "TW", smTradChinese},
    {"zh", "HK", smTradChinese}, {"zh", "MO", smTradChinese}, {"zh", "", smSimpChinese},
};

/// Cuts `name` before `mark` and returns what stands behind it.
std::string_view CutAt(std::string_view& name, char mark) {
    const std::size_t at = name.find(mark);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view behind = name.substr(at + 1);
    name = name.substr(0, at);
    return behind;
}

/// Names become names of folders, so nothing that leads elsewhere counts.
std::string PlainName(std::string_view name) {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    });
    return std::string(isPlain ? name : std::string_view());
}

TextEncoding CodeSetNamed(std::string_view name) {
    const TextEncoding encoding = TextConversion::EncodingOfCodeSet(name);
    return encoding == TextConversion::kUnknownEncoding ? kUtf8 : encoding;
}

std::string_view EnvironmentLocale() {
    for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (const char* const value = std::getenv(variable); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

/// Function-local, so that it can be asked and set from static initialisers, and never destroyed, for
/// static destructors.
HostLocale::Locale& Stored() {
    static auto* const locale = new HostLocale::Locale(HostLocale::Read(EnvironmentLocale()));
    return *locale;
}

}  // namespace

namespace HostLocale {

Locale Read(std::string_view posixName) {
    CutAt(posixName, '@');
    const TextEncoding codeSet = CodeSetNamed(CutAt(posixName, '.'));
    const std::string_view territory = CutAt(posixName, '_');
    const bool isLanguage = posixName != "C" && posixName != "POSIX";
    Locale locale{smRoman, codeSet, isLanguage ? PlainName(posixName) : std::string(), PlainName(territory)};
    for (const LocaleScript& row : kScripts) {
        if (row.language == posixName && (row.territory.empty() || row.territory == territory)) {
            locale.script = row.script;
            break;
        }
    }
    return locale;
}

const Locale& Current() { return Stored(); }

}  // namespace HostLocale

void Lum::Platform::SetLocale(const std::string& posixName) { Stored() = HostLocale::Read(posixName); }
