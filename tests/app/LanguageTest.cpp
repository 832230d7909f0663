#include <gtest/gtest.h>

#include "app/Language.h"
#include "emulation/Language.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"

namespace {

using corvane::app::chosenLanguage;
using corvane::app::languageFolderName;

TEST(Language, FollowsTheOptionThenTheCadSystemThenTheUser) {
    const std::string option =
        "[HKEY_CURRENT_USER\\SOFTWARE\\Tessaly\\ORB_PRODUCT\\Corvane\\Add-in]\n"
        "\"OptionsLanguage\"=";
    const std::string cad2007 =
        "[HKEY_CURRENT_USER\\SOFTWARE\\Solidworks\\SolidWorks 2007\\General]\n"
        "\"Use English language\"=dword:";
    std::string cad2008 = cad2007;
    cad2008.replace(cad2008.find("2007"), 4, "2008");
    struct Case {
        std::string keys;
        const char* locale;
        const char16_t* name;
        const char16_t* folder;
    };
    const Case cases[] = {
        {"", "fr_FR.UTF-8", u"french", u"french"},
        {"", "fr_CA", u"english", u"english"},
        {"", "en_GB.UTF-8", u"english", u"english"},
        {"", "C", u"english", u"english"},
        {"", "de_DE", u"german", u"english"},
        {"", "pt_BR", u"portuguese-brazilian", u"english"},
        {option + "dword:0", "fr_FR", u"english", u"english"},
        {option + "dword:1", "ja_JP", u"japanese", u"japanese"},
        {option + "dword:ffffffff", "ko_KR", u"korean", u"korean"},
        {option + "\"0\"", "ko_KR", u"korean", u"korean"},
        {option + "dword:40c\n" + cad2008 + "1", "C", u"french", u"french"},
        {option + "dword:407", "fr_FR", u"german", u"english"},
        {option + "dword:270f", "fr_FR", u"english", u"english"},
        {option + "dword:1040c", "ja_JP", u"english", u"english"},
        {cad2007 + "1", "fr_FR", u"english", u"english"},
        {cad2007 + "0\n" + cad2008 + "1", "fr_FR", u"english", u"english"},
        {cad2007 + "2", "fr_FR", u"french", u"french"},
    };
    const TemporaryFolder folder;
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", folder.path());
    for (const Case& test : cases) {
        folder.write("user.reg", "Windows Registry Editor Version 5.00\n\n" + test.keys + "\n");
        const EnvironmentScope locale("LC_ALL", test.locale);
        EXPECT_EQ(CStringW(chosenLanguage().name), test.name) << test.keys << ' ' << test.locale;
        EXPECT_EQ(CStringW(languageFolderName(test.name)), test.folder) << test.keys;
    }
}

TEST(Language, LeadsToTheFolderOfTheSystemsLocaleForChinese) {
    const corvane::emulation::LocaleNames locale = corvane::emulation::systemLocale();
    const CStringW folder = locale.language + u"_" + locale.country;
    EXPECT_EQ(languageFolderName(u"chinese"), folder.Std());
    EXPECT_EQ(languageFolderName(u"chinese-simplified"), folder.Std());
    EXPECT_EQ(CStringW(languageFolderName(u"French")), u"english");
}

}  // namespace
