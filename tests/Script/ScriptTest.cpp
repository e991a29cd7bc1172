#include "Platform/Script/Script.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include <Lum/Platform.h>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

class Script : public testing::Test {
protected:
    ~Script() override { Lum::Platform::SetLocale("C"); }
};

TEST_F(Script, FollowsTheLocale) {
    const std::tuple<const char*, ScriptCode, LangCode, TextEncoding> rows[] = {
        {"C", smRoman, langEnglish, 0x08000100},
        {"fr_FR.ISO8859-1@euro", smRoman, langEnglish, 0x0201},
        {"fr_FR.ISO8859_10", smRoman, langEnglish, 0x020A},
        {"fr_FR.no-such-code-set", smRoman, langEnglish, 0x08000100},
        {"C.ANSI_X3.4-1968", smRoman, langEnglish, 0x0600},
        {"ja", smJapanese, langJapanese, 0x08000100},
        {"ja_JP.eucJP", smJapanese, langJapanese, 0x0920},
        {"ko_KR.utf8", smKorean, langKorean, 0x08000100},
        {"zh_HK", smTradChinese, langTradChinese, 0x08000100},
        {"zh", smSimpChinese, langSimpChinese, 0x08000100},
    };
    for (const auto& [name, script, language, codeSet] : rows) {
        Lum::Platform::SetLocale(name);
        EXPECT_EQ(GetScriptManagerVariable(smSysScript), script) << name;
        EXPECT_EQ(GetScriptManagerVariable(smDoubleByte) != 0, script != smRoman) << name;
        EXPECT_EQ(GetApplicationTextEncoding(), codeSet) << name;
        TextEncoding encoding = 0;
        EXPECT_EQ(UpgradeScriptInfoToTextEncoding(-1, -128, -128, nullptr, &encoding), noErr);
        EXPECT_EQ(encoding, static_cast<TextEncoding>(script)) << name;
        LangCode reverted = -1;
        ScriptCode back = -1;
        Str255 font = {9};
        EXPECT_EQ(RevertTextEncodingToScriptInfo(encoding, &back, &reverted, font), noErr);
        EXPECT_EQ(std::tuple(back, reverted, int{font[0]}), std::tuple(script, language, 0)) << name;
    }
    EXPECT_EQ(GetScriptManagerVariable(0), 0);
    TextEncoding untouched = 7;
    EXPECT_EQ(UpgradeScriptInfoToTextEncoding(100, -128, -128, nullptr, &untouched), paramErr);
    EXPECT_EQ(untouched, 7U);
}

TEST_F(Script, LeadBytesAreThoseOfTheScript) {
    const auto table = [](ScriptCode script) {
        CharByteTable flags;
        FillParseTable(flags, script);
        return std::string(flags, sizeof flags);
    };
    const std::string one(94, '\1'), zero(256, '\0');
    EXPECT_EQ(table(smRoman), zero);
    for (const ScriptCode script : {smTradChinese, smKorean, smSimpChinese}) {
        EXPECT_EQ(table(script), std::string(zero).replace(0xA1, 94, one)) << script;
    }
    Lum::Platform::SetLocale("ja_JP");
    EXPECT_EQ(table(smSystemScript), std::string(zero).replace(0x81, 31, one, 0, 31).replace(0xE0, 29, one, 0, 29));
}

TEST_F(Script, ASetApplicationEncodingHoldsAgainstTheLocale) {
    Lum::Platform::SetApplicationTextEncoding(0x0A01);
    Lum::Platform::SetLocale("ja_JP.eucJP");
    EXPECT_EQ(GetApplicationTextEncoding(), 0x0A01U);
    Lum::Platform::SetApplicationTextEncoding(0xFFFF);
    EXPECT_EQ(GetApplicationTextEncoding(), 0x0920U);
}

}  // namespace
