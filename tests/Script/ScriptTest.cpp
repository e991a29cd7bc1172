#include "Platform/Script/Script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include <Lum/Platform.h>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

struct LocaleRow {
    const char* name;
    ScriptCode script;
    LangCode language;
    TextEncoding codeSet;
};

class Script : public testing::Test {
protected:
    ~Script() override { Lum::Platform::SetLocale("C"); }
};

TEST_F(Script, FollowsTheLocale) {
    const LocaleRow rows[] = {
        {"", smRoman, langEnglish, 0x08000100},
        {"C", smRoman, langEnglish, 0x08000100},
        {"POSIX", smRoman, langEnglish, 0x08000100},
        {"fr_FR.ISO8859-1@euro", smRoman, langEnglish, 0x0201},
        {"fr_FR.no-such-code-set", smRoman, langEnglish, 0x08000100},
        {"C.ANSI_X3.4-1968", smRoman, langEnglish, 0x0600},
        {"ja", smJapanese, langJapanese, 0x08000100},
        {"ja_JP.eucJP", smJapanese, langJapanese, 0x0920},
        {"ja_JP.SJIS", smJapanese, langJapanese, 0x0A01},
        {"ko_KR.utf8", smKorean, langKorean, 0x08000100},
        {"zh_TW.UTF-8", smTradChinese, langTradChinese, 0x08000100},
        {"zh_HK", smTradChinese, langTradChinese, 0x08000100},
        {"zh_CN", smSimpChinese, langSimpChinese, 0x08000100},
        {"zh", smSimpChinese, langSimpChinese, 0x08000100},
    };
    for (const LocaleRow& row : rows) {
        Lum::Platform::SetLocale(row.name);
        EXPECT_EQ(GetScriptManagerVariable(smSysScript), row.script) << row.name;
        EXPECT_EQ(GetScriptManagerVariable(smDoubleByte) != 0, row.script != smRoman) << row.name;
        EXPECT_EQ(GetApplicationTextEncoding(), row.codeSet) << row.name;
        TextEncoding encoding = 0;
        EXPECT_EQ(UpgradeScriptInfoToTextEncoding(-1, -128, -128, nullptr, &encoding), noErr);
        EXPECT_EQ(encoding, static_cast<TextEncoding>(row.script)) << row.name;
        LangCode language = -1;
        EXPECT_EQ(RevertTextEncodingToScriptInfo(encoding, nullptr, &language, nullptr), noErr);
        EXPECT_EQ(language, row.language) << row.name;
    }
    EXPECT_EQ(GetScriptManagerVariable(19), 0);
    TextEncoding untouched = 7;
    EXPECT_EQ(UpgradeScriptInfoToTextEncoding(100, -128, -128, nullptr, &untouched), paramErr);
    EXPECT_EQ(untouched, 7U);
}

TEST_F(Script, LeadBytesAreThoseOfTheScript) {
    struct Row {
        ScriptCode script;
        int count;
        unsigned char first, last;
    };
    CharByteTable table;
    for (const Row& row : {Row{smJapanese, 60, 0x81, 0xFC}, Row{smTradChinese, 94, 0xA1, 0xFE},
                           Row{smKorean, 94, 0xA1, 0xFE}, Row{smSimpChinese, 94, 0xA1, 0xFE}}) {
        FillParseTable(table, row.script);
        const std::string flags(table, sizeof table);
        EXPECT_EQ(std::count(flags.begin(), flags.end(), '\1'), row.count);
        EXPECT_EQ(flags.find('\1'), row.first);
        EXPECT_EQ(flags.rfind('\1'), row.last);
    }
    FillParseTable(table, smRoman);
    EXPECT_EQ(std::string(table, sizeof table), std::string(256, '\0'));
    Lum::Platform::SetLocale("ja_JP");
    FillParseTable(table, smSystemScript);
    EXPECT_EQ(table[0xA0], 0);
    EXPECT_EQ(table[0xE0], 1);
}

TEST_F(Script, ASetApplicationEncodingHoldsAgainstTheLocale) {
    Lum::Platform::SetApplicationTextEncoding(0x0A01);
    Lum::Platform::SetLocale("ja_JP.eucJP");
    EXPECT_EQ(GetApplicationTextEncoding(), 0x0A01U);
    Lum::Platform::SetApplicationTextEncoding(0xFFFF);
    EXPECT_EQ(GetApplicationTextEncoding(), 0x0920U);
}

}  // namespace
