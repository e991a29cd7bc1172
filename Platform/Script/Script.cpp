// The system's script, and the lead bytes of the scripts that have characters of two bytes.
#include "Platform/Script/Script.h"

#include <string_view>

#include "Platform/Host/Locale.h"

using namespace Lum::Internal;

namespace {

struct LocaleScript {
    std::string_view language;
    /// Empty for every territory that has no row of its own.
    std::string_view territory;
    ScriptCode script;
};

/// Every other language is written in the Roman script.
constexpr LocaleScript kScripts[] = {
    {"ja", "", smJapanese},      {"ko", "", smKorean},        {"zh", "TW", smTradChinese},
    {"zh", "HK", smTradChinese}, {"zh", "MO", smTradChinese}, {"zh", "", smSimpChinese},
};

ScriptCode SystemScript() {
    const Host::Locale& locale = Host::CurrentLocale();
    for (const LocaleScript& row : kScripts) {
        if (row.language == locale.language && (row.territory.empty() || row.territory == locale.territory)) {
            return row.script;
        }
    }
    return smRoman;
}

constexpr bool IsDoubleByte(ScriptCode script) {
    return script == smJapanese || script == smTradChinese || script == smKorean || script == smSimpChinese;
}

constexpr bool IsLeadByte(ScriptCode script, int byte) {
    if (script == smJapanese) {
        return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    }
    return IsDoubleByte(script) && byte >= 0xA1 && byte <= 0xFE;
}

}  // namespace

long GetScriptManagerVariable(short selector) {
    const ScriptCode script = SystemScript();
    switch (selector) {
        case smSysScript:
            return script;
        case smDoubleByte:
            return IsDoubleByte(script) ? 1 : 0;
        default:
            return 0;
    }
}

unsigned char FillParseTable(CharByteTable table, ScriptCode script) {
    if (script == smSystemScript || script == smCurrentScript) {
        script = SystemScript();
    }
    for (int byte = 0; byte < 256; ++byte) {
        table[byte] = IsLeadByte(script, byte) ? 1 : 0;
    }
    return 1;
}
