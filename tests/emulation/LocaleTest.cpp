#include <gtest/gtest.h>
#include <string_view>
#include <utility>

#include "emulation/Language.h"
#include "support/EnvironmentScope.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;

TEST(Locale, MapsNamesToLanguageIdentifiers) {
    const std::pair<const char*, std::uint16_t> cases[] = {
        {"fr_FR", 1036},    {"fr_FR.UTF-8", 1036}, {"fr", 1036},          {"FR-fr@euro", 1036},
        {"fr_CA", 3084},    {"fr_XX", 1033},       {"zh_TW.UTF-8", 1028}, {"zh_CN", 2052},
        {"zh", 2052},       {"cs_CZ", 1029},       {"de_DE", 1031},       {"en_GB", 2057},
        {"es_ES", 1034},    {"it_IT", 1040},       {"ja_JP.eucJP", 1041}, {"ko_KR", 1042},
        {"pl_PL", 1045},    {"pt_BR", 1046},       {"ru_RU", 1049},       {"sv_SE", 1033},
        {"C", 1033},        {"C.UTF-8", 1033},     {"POSIX", 1033},       {"f", 1033},
        {"fr_FR_FR", 1033}, {"../fr", 1033},       {"fr_", 1033},         {".UTF-8", 1033}};
    const EnvironmentScope all("LC_ALL", "");
    for (const auto& [name, id] : cases) {
        all.set(name);
        EXPECT_EQ(userLanguageId(), id) << name;
    }
}

TEST(Locale, TakesTheFirstVariableThatIsNotEmpty) {
    const EnvironmentScope all("LC_ALL", "ja_JP");
    const EnvironmentScope messages("LC_MESSAGES", "ko_KR");
    const EnvironmentScope lang("LANG", "fr_FR");
    EXPECT_EQ(userLanguageId(), 1041);
    all.set("");
    EXPECT_EQ(userLanguageId(), 1042);
    messages.set(nullptr);
    EXPECT_EQ(userLanguageId(), 1036);
    lang.set(nullptr);
    EXPECT_EQ(userLanguageId(), 1033);
}

TEST(Locale, ReadsTheMachinesLanguageFromShellAssignments) {
    EXPECT_EQ(languageSetting(u"# LANG=a\nLANGUAGE=b\nLANG=\"fr_FR\"\n"), u"fr_FR");
    EXPECT_EQ(languageSetting(u"LANG=a\r\n  export LANG='zh_TW.UTF-8' "), u"zh_TW.UTF-8");
    EXPECT_EQ(languageSetting(u"LANG=\""), u"\"");
    EXPECT_EQ(languageSetting(u"LC_ALL=x"), u"");
    // What is taken for a country may become part of a path.
    EXPECT_FALSE(parseLocaleName(u"zh_../x"));
}

}  // namespace
