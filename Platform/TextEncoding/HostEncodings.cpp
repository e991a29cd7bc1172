// The encodings that follow from the host's set-up: the system script's, and that of the application's
// narrow texts.
#include <cstdint>
#include <string>

#include <Lum/Platform.h>

#include "Platform/Host/Locale.h"
#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

using namespace Lum::Internal;

namespace {

constexpr TextEncoding kUtf8 = CreateTextEncoding(kTextEncodingUnicodeDefault, 0, kUnicodeUTF8Format);

/// Up to this one, a script and its classic encoding have the same number.
constexpr ScriptCode kLastScript = 32;

struct ScriptLanguage {
    ScriptCode script;
    LangCode language;
};

/// Every other script belongs to English.
constexpr ScriptLanguage kLanguages[] = {
    {smJapanese, langJapanese},
    {smTradChinese, langTradChinese},
    {smKorean, langKorean},
    {smSimpChinese, langSimpChinese},
};

/// The encoding that was set. It is initialised before any code runs, so static initialisers can use it.
constinit TextEncoding s_applicationEncoding = TextConversion::kUnknownEncoding;

TextEncoding EncodingOfLocale(const Host::Locale& locale) {
    const TextEncoding encoding = TextConversion::EncodingOfCodeSet(locale.codeSet);
    return encoding == TextConversion::kUnknownEncoding ? kUtf8 : encoding;
}

/// The encoding of the current locale. It is kept because looking a code set up compares it with all names.
TextEncoding& LocaleEncoding() {
    static TextEncoding encoding = EncodingOfLocale(Host::CurrentLocale());
    return encoding;
}

}  // namespace

void Lum::Platform::SetLocale(const std::string& posixName) {
    Host::SetCurrentLocale(posixName);
    LocaleEncoding() = EncodingOfLocale(Host::CurrentLocale());
}

void Lum::Platform::SetApplicationTextEncoding(std::uint32_t textEncoding) { s_applicationEncoding = textEncoding; }

TextEncoding GetApplicationTextEncoding() {
    return s_applicationEncoding != TextConversion::kUnknownEncoding ? s_applicationEncoding : LocaleEncoding();
}

OSStatus UpgradeScriptInfoToTextEncoding(ScriptCode script, LangCode /*language*/, RegionCode /*region*/,
                                         ConstStr255Param /*font*/, TextEncoding* encoding) {
    if (script == smSystemScript || script == smCurrentScript || script == kTextScriptDontCare) {
        script = static_cast<ScriptCode>(GetScriptManagerVariable(smSysScript));
    }
    if (script < 0 || script > kLastScript) {
        return paramErr;
    }
    *encoding = static_cast<TextEncoding>(script);
    return noErr;
}

OSStatus RevertTextEncodingToScriptInfo(TextEncoding encoding, ScriptCode* script, LangCode* language, Str255 font) {
    const bool isScripts = encoding <= static_cast<TextEncoding>(kLastScript);
    const ScriptCode found = isScripts ? static_cast<ScriptCode>(encoding) : smRoman;
    if (script != nullptr) {
        *script = found;
    }
    if (language != nullptr) {
        *language = langEnglish;
        for (const ScriptLanguage& row : kLanguages) {
            if (row.script == found) {
                *language = row.language;
            }
        }
    }
    if (font != nullptr) {
        font[0] = 0;
    }
    return noErr;
}
