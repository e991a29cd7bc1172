// Scripts and their classic encodings: the numbers of both are the same.
#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

/// The last script that has an encoding of the same number.
constexpr ScriptCode kLastScript = 32;

struct ScriptLanguage {
    ScriptCode script;
    LangCode language;
};

/// The language of each script that is not told from English.
constexpr ScriptLanguage kLanguages[] = {
    {smJapanese, langJapanese},
    {smTradChinese, langTradChinese},
    {smKorean, langKorean},
    {smSimpChinese, langSimpChinese},
};

}  // namespace

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
