#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <string>

#include "CommandLine.h"
#include "language/Messages.h"

namespace {

using testing::HasSubstr;
using Json = nlohmann::json;

constexpr const char* kLocales[] = {"C", "fr_FR.UTF-8", "ja_JP.UTF-8", "ko_KR.UTF-8"};

class Languages : public testing::Test {
protected:
    Languages() {
        corvane.folder.write("rules.xml",
                             ruleFile("<Rule Name='Wall' Description='Thick' Severity='2' "
                                      "CategoryText='General' File='none.lua'/>"));
        corvane.folder.write("slip.xml", ruleFile("<Rule Name='Wall' Severty='2'/>"));
    }

    /// Everything that a command writes, in the language of a locale.
    std::string told(const std::string& locale, const std::string& command,
                     const std::vector<std::string>& arguments) const {
        const EnvironmentScope language("LC_ALL", locale);
        const ProcessResult result = corvane(command, arguments);
        return result.out + result.err;
    }

    const CommandLine corvane;
};

TEST_F(Languages, SpeakInHelpAndBadUsageAndRunsAndLintAndDoctor) {
    struct Case {
        const char* command;
        std::vector<std::string> arguments;
        const char* told[4];  ///< In the order of kLocales.
    };
    const Case cases[] = {
        {"run",
         {"@rules.xml"},
         {"1 rule: 0 passed, 1 error", "1 règle\u00A0: 0 conforme, 1 erreur",
          "ルール 1 件: 合格 0、エラー 1", "규칙 1개: 합격 0, 오류 1"}},
        {"run",
         {"@rules.xml"},
         {"there is no script", "il n’y a pas de script", "がありません", "없습니다"}},
        {"lint",
         {"@slip.xml"},
         {"2 errors, 0 warnings", "2 erreurs, 0 avertissement", "エラー 2、警告 0",
          "오류 2, 경고 0"}},
        {"lint",
         {"@slip.xml"},
         {"<Rule> has no attribute", "<Rule> n’a pas d’attribut", "属性「Severty」",
          "속성 \"Severty\""}},
        {"doctor",
         {},
         {"Installation\n  ok     library", "bibliothèque", "正常  ライブラリ",
          "정상  라이브러리"}},
        {"run", {"--help"}, {"REQUIRED", "OBLIGATOIRE", "必須", "필수"}},
        {"db",
         {"--help"},
         {"\nSubcommands:\n", "\nCommandes\u00A0:\n", "\nコマンド:\n", "\n명령:\n"}},
        {"run",
         {},
         {"RULEFILE is required", "RULEFILE est requis", "RULEFILE を指定", "RULEFILE을(를) 지정"}},
        {"run",
         {"@rules.xml", "--timeout", "x"},
         {"Value x not in range", "La valeur x n’est pas", "値 x が", "값 x이(가)"}},
        {"run",
         {"@rules.xml", "--batsh"},
         {"\"--batch\"?", "«\u00A0--batch\u00A0»", "「--batch」", "\"--batch\"을"}},
    };
    for (const Case& each : cases) {
        for (std::size_t i = 0; i < std::size(kLocales); ++i)
            EXPECT_THAT(told(kLocales[i], each.command, each.arguments), HasSubstr(each.told[i]))
                << kLocales[i];
    }
}

TEST_F(Languages, AreChosenByTheSettingBeforeTheEnvironmentAndEnglishWithoutTexts) {
    EXPECT_THAT(told("de_DE.UTF-8", "run", {}), HasSubstr("is required"));
    corvane.folder.write("registry/user.reg",
                         "REGEDIT4\n[HKEY_CURRENT_USER\\SOFTWARE\\Tessaly\\ORB_PRODUCT\\Corvane\\"
                         "Add-in]\n\"OptionsLanguage\"=dword:0000040c\n");
    EXPECT_THAT(told("ja_JP.UTF-8", "run", {}), HasSubstr("est requis"));
}

TEST_F(Languages, LeaveWhatProgramsReadAsItIs) {
    const auto run = [this](const char* locale) {
        Json json =
            Json::parse(told(locale, "run", {"@rules.xml", "--format", "json"}), nullptr, false);
        EXPECT_TRUE(json.is_object());
        if (!json.is_object()) return std::string();
        return std::regex_replace(json.dump(), std::regex("\"(seconds|started)\":[^,}]*"), "");
    };
    const std::string english = run("C");
    EXPECT_THAT(english, HasSubstr("there is no script"));
    const std::string lint = told("C", "lint", {"@slip.xml", "--format", "json"});
    const std::string sarif = told("C", "lint", {"@slip.xml", "--format", "sarif"});
    for (const char* locale : kLocales) {
        EXPECT_EQ(run(locale), english);
        EXPECT_EQ(told(locale, "lint", {"@slip.xml", "--format", "json"}), lint);
        EXPECT_EQ(told(locale, "lint", {"@slip.xml", "--format", "sarif"}), sarif);
    }
}

TEST_F(Languages, SpeakInTheReportWithItsReasons) {
    told("fr_FR.UTF-8", "run", {"@rules.xml", "--output", "html=" + corvane.folder.path("r.html")});
    const std::string page = corvane.folder.read("r.html");
    for (const char* text :
         {"<html lang=\"fr\">", "<h1>Vérification de pièces</h1>",
          "\"Could not judge\":\"Non jugé\"", "\"reasons\":[\"il n’y a pas de script"})
        EXPECT_THAT(page, HasSubstr(text));
    EXPECT_EQ(page.find("{{"), page.npos);
}

/// The compiler looks up the texts of the program; those of the report are in its page and scripts.
TEST(Catalogue, HasWhatTheReportSaysAndNothingElse) {
    const std::string folder = CORVANE_TEST_DATA "/../tools/corvane/results/report/";
    std::set<std::string> used{"en", "point", "box", "polyline", "facets", "faces"};
    const std::regex call("\\btr\\(\"([^\"]*)\"|\\{\\{([^}]*)\\}\\}");
    for (const char* name :
         {"page.html", "report.js", "detail.js", "drawing.js", "solid.js", "surface.js"}) {
        const std::string text = TemporaryFolder::readFile(folder + name);
        for (std::sregex_iterator each(text.begin(), text.end(), call), end; each != end; ++each)
            used.insert((*each)[1].matched ? (*each)[1] : (*each)[2]);
    }
    std::set<std::string> known;
    for (const language::Translation& entry : language::kReportTexts)
        known.emplace(entry.texts[0]);
    EXPECT_EQ(known, used);
}

TEST(Catalogue, HasEachTextOnce) {
    std::set<std::string_view> seen;
    for (const auto& table : language::kTables)
        for (const language::Translation& entry : table)
            EXPECT_TRUE(seen.insert(entry.texts[0]).second) << entry.texts[0];
}

}  // namespace
