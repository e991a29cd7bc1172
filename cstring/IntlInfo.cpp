// What the host's script says about bytes, as far as strings ask.
#include <Lum/CString.h>

#include "Platform/Script/Script.h"

constinit long IntlInfo::s_systemScript = 0;
constinit bool IntlInfo::s_doubleByte = false;
constinit unsigned char IntlInfo::s_leadByteTable[256] = {};

void IntlInfo::Initialize() {
    s_systemScript = GetScriptManagerVariable(smSysScript);
    s_doubleByte = GetScriptManagerVariable(smDoubleByte) != 0;
    FillParseTable(reinterpret_cast<char*>(s_leadByteTable), static_cast<ScriptCode>(s_systemScript));
}
