// The system's script, and the lead bytes of the scripts that have characters of two bytes.
#include "Platform/Script/Script.h"

#include "Platform/Script/HostLocale.h"

namespace {

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
    const ScriptCode script = HostLocale::Current().script;
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
        script = HostLocale::Current().script;
    }
    for (int byte = 0; byte < 256; ++byte) {
        table[byte] = IsLeadByte(script, byte) ? 1 : 0;
    }
    return 1;
}
