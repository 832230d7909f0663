#include <filesystem>
#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// The program with a script folder and the registrations of the examples.
class Doctor : public testing::Test {
protected:
    Doctor() { corvane.folder.write("scripts/a.lua", ""); }

    /// Runs it and expects a fault exactly when `told` begins with "wrong".
    void expectTold(const std::string& told, const std::vector<std::string>& arguments = {}) const {
        SCOPED_TRACE(told);
        const ProcessResult result = corvane("doctor", arguments);
        EXPECT_EQ(result.status, told.starts_with("wrong") ? 1 : 0) << result.out;
        EXPECT_THAT(result.out, ContainsRegex("\n  " + told));
        EXPECT_EQ(result.err, "");
    }
    void writeSettings(const std::string& text) const {
        corvane.folder.write("data/Settings/ConfigModule.ini", text);
    }
    std::string scriptFolder() const { return "directory=" + corvane.folder.path("scripts"); }

    CommandLine corvane;
    EnvironmentScope log_{"QOR_EXECUTION_LOG", nullptr};
    EnvironmentScope level_{"QOR_EXECUTION_LEVEL", nullptr};
    EnvironmentScope help_{"CORVANE_CUSTOMIZED_HELP_FOLDER_PATH", nullptr};
};

const std::string kScripts = "[RULE_SCRIPT_LOCATION]\n";
const std::string kDatabase = "[RULE_DATABASE_MODULES]\n";

TEST_F(Doctor, FindsNothingWrongWithTheExamples) {
    const std::string examples = CORVANE_BUILD_DIR "/examples/";
    const ProcessResult result =
        corvane("doctor", {"--data", examples + "data", "--registry", examples + "registry"});
    EXPECT_EQ(result.status, 0) << result.out;
    for (const char* told :
         {"library +.*/libCorvaneFrameworku.so.*, version [0-9]", "language +english",
          "script folder +.*/examples/scripts\n", "index +/.*/UserDefinedFile.xml, 7 rules\n",
          "Thinnest wall +wall.lua\n", "module +.*/QorScriptHost.so\n",
          "mesh.tlb +/.*/mesh.tlb, version 1.0, locale 0\n", "partrules.so +/",
          "driver module +.*/QorSqliteDatabaseu.so\n"})
        EXPECT_THAT(result.out, ContainsRegex(std::string("  ok     ") + told));
    EXPECT_THAT(result.out, ContainsRegex("\nNothing is wrong, [0-9]+ notes\n$"));
}

TEST_F(Doctor, NotesWhatIsNotSetUpAndMakesNothing) {
    fs::create_directories(corvane.folder.path("empty"));
    const ProcessResult result = corvane("doctor", {"--data", "@none", "--registry", "@empty"});
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Not(HasSubstr("wrong  ")));
    for (const char* told : {"settings folder +/.*none/Settings", "script folder +none",
                             "registration +.*not registered", "connection +.*/qorSqliteDb.dat is"})
        EXPECT_THAT(result.out, ContainsRegex(std::string("  note   ") + told));
    EXPECT_FALSE(corvane.folder.exists("none"));
    EXPECT_TRUE(fs::is_empty(corvane.databases()));
}

TEST_F(Doctor, ExplainsWhyALineOfTheConfigurationDoesNotCount) {
    corvane.folder.write("scripts/UserDefinedFile.xml", ruleFile(scriptRule("r", "a.lua")));
    const std::string folder = scriptFolder();
    const struct {
        std::string settings;
        std::string told;
    } cases[] = {
        {kScripts + folder + "\n", "ok     directory +/"},
        {kScripts + folder,
         "wrong  ConfigModule.ini +its last line, \"directory\", has no line end"},
        {kScripts + folder + "\n;" + folder + "/old\n", "note   directory .*/old\" is not read"},
        {kScripts + "#" + folder + "\n", "wrong  directory .*commented out and counts"},
        {kScripts + "directory = /x\n",
         "wrong  directory .*\"directory = /x\" below .* is not read"},
        {kScripts + folder + "\n# directory = FOLDER\ndirectory = x\n", "note   directory .*= x"},
        {"[Rule_Script_Location]\n" + folder + "\n", "wrong  directory .*case and blanks count"},
        {"[X]\n" + folder + "\n", "wrong  directory .*below \"\\[X]\" is not read"},
        {kScripts + "ConnectionString=PWD=x\n", "wrong  ConnectionString .*=\\.\\.\\.\" below"},
        {kScripts + "directory=/a[b]\n", "wrong  directory +the value holds"},
        {"\xEF\xBB\xBF" + kScripts + folder + "\n", "wrong  ConfigModule.ini .*byte order mark"},
        {"\xEF\xBB\xBF" + kDatabase + kScripts + folder + "\n", "note   ConfigModule.ini .*byte"},
        {kScripts + "directory=/none\n", "wrong  script folder +\"/none\" is no folder"},
        {kDatabase + "Filename=a\nmodule2=b\n" + kScripts + folder + "\n",
         "note   module2 +nothing reads"},
        {kDatabase + "FileName=" + std::string(300, 'a') + "\n", "wrong  FileName .*cut to 259"},
    };
    for (const auto& [settings, told] : cases) {
        writeSettings(settings);
        expectTold(told);
    }
    fs::remove(corvane.folder.path("data/Settings/ConfigModule.ini"));
    fs::create_directories(corvane.folder.path("data/Settings/ConfigModule.ini"));
    expectTold("wrong  ConfigModule.ini .*cannot be read");
    corvane.folder.write("file", "");
    expectTold("wrong  settings folder .*/file is no folder", {"--data", "@file"});
}

TEST_F(Doctor, LooksAtTheScriptsOfTheIndex) {
    writeSettings(kScripts + "directory=.\n");
    expectTold("note   script folder +[.] is no full path and depends on the working folder");
    writeSettings(kScripts + scriptFolder() + "\n");
    const struct {
        std::string index;
        const char* told;
    } cases[] = {
        {"<Rules>\n<Rule</Rules>", "wrong  index +/.*UserDefinedFile.xml:2:[0-9]+: "},
        {"<Rules><Regel/></Rules>", "wrong  index .*<Rules> has no child <Rule>"},
        {ruleFile(scriptRule("r", "a.lua")), "ok     r +a.lua\n"},
        {ruleFile(scriptRule("r", "b.lua")), "wrong  r +there is no script /.*/scripts/b.lua\n"},
        {ruleFile(scriptRule("r", "")), "wrong  r +the rule names no script"},
        {ruleFile("<Rule File='a.lua'/>"), "wrong  line 2 of the index +the rule has no name"},
        {ruleFile(scriptRule("r", "a.lua") + "\n" + scriptRule("R", "a.lua")),
         "wrong  R +line 3 of the index is never used: .* line 2 of"},
        {ruleFile(scriptRule("r", "a.lua", "<Engines><Engine Engine='e' GUID='{1}'/></Engines>")),
         "wrong  r +the engine \"e\" .1. is not registered"},
    };
    expectTold("note   index .*is not there");
    for (const auto& [index, told] : cases) {
        corvane.folder.write("scripts/UserDefinedFile.xml", index);
        expectTold(told);
    }
}

TEST_F(Doctor, LooksIntoScriptsTheirEnginesAndTheirLimits) {
    writeSettings(kScripts + scriptFolder() + "\n");
    corvane.folder.write("scripts/UserDefinedFile.xml",
                         ruleFile(scriptRule("r", "a.lua", kMeshEngine)));
    const std::pair<const char*, const char*> cases[] = {
        {"local a = = 1", "wrong  a.lua.* +/.*/scripts/a.lua:1: "},
        {"\nmesch.part()", "wrong  a.lua.* +/.*/a.lua:2: nothing is called \"mesch\""},
        {"-- \xE9", "wrong  a.lua.* +/.*/a.lua: the script is no UTF-8"},
        {"return params.limit", "wrong  a.lua.*has no parameter \"limit\""},
        {"mesh.part()", "ok     r +a.lua\n"},
    };
    for (const auto& [script, told] : cases) {
        corvane.folder.write("scripts/a.lua", script);
        expectTold(told);
    }
    {
        const EnvironmentScope limit("CORVANE_SCRIPT_MAX_SECONDS", "ten");
        expectTold("wrong  limits of scripts +CORVANE_SCRIPT_MAX_SECONDS is \"ten\"");
    }
    std::string registry = CommandLine::exampleRegistry("user.reg");
    const std::string library =
        TemporaryFolder::readFile(CORVANE_TEST_DATA "/../examples/meshengine/mesh.tlb");
    corvane.folder.write("mesh.tlb", library.substr(0, 200));
    registry.insert(registry.find("@="), "@=\"" + corvane.folder.path("mesh.tlb") + "\"\n;");
    corvane.folder.write("registry/user.reg", registry);
    expectTold("wrong  mesh.tlb .*a damaged one");
    expectTold("wrong  UserDefinedFile.xml:2 .*/mesh.tlb is missing or no type library");
}

TEST_F(Doctor, LooksAtWhatIsRegistered) {
    const std::string host = CommandLine::exampleRegistry("machine.reg");
    const std::string engine = CommandLine::exampleRegistry("user.reg");
    const auto changed = [](std::string text, std::string_view from, const std::string& to) {
        return text.replace(text.find(from), from.size(), to);
    };
    corvane.folder.write("lone.tlb", TemporaryFolder::readFile(CORVANE_TEST_DATA
                                                               "/../examples/meshengine/mesh.tlb"));
    const std::string lone = "@=\"" + corvane.folder.path("lone.tlb") + "\"\n;";
    const struct {
        std::string host;
        std::string engine;
        const char* told;
    } cases[] = {
        {"", engine, "wrong  registration .*ScriptProcessor is not registered"},
        {changed(host, "InprocServer32", "None"), engine, "wrong  registration .*has no module"},
        {changed(host, "QorScriptHost.dll", "None.dll"), engine, "wrong  module +there is no None"},
        {changed(host, "QorScriptHost.dll", "QORDatabaseu.dll"), engine,
         "wrong  trial .*0x800401F9"},
        {host, changed(engine, "win64", "win32"), "wrong  type library .*no file for 64-bit"},
        {host, changed(engine, "mesh.tlb", "none.tlb"), "wrong  none.tlb +there is no /"},
        {host, changed(engine, "@=", "@=\"/etc/passwd\"\n;"), "wrong  passwd .*no type library"},
        {host, changed(engine, "@=", lone), "wrong  lone.tlb .*there is no module of its name"},
        {host, engine + changed(engine.substr(engine.find("[")), "1.0", "0.9"),
         "note   mesh.tlb .* 0.9 0 is hidden"},
    };
    for (const auto& [machine, user, told] : cases) {
        corvane.folder.write("registry/machine.reg", machine);
        corvane.folder.write("registry/user.reg", user);
        expectTold(told);
    }
    corvane.folder.write("registry/user.reg", "x");
    expectTold("note   user.reg .*holds no key");
    expectTold("wrong  registry +none is no folder", {"--registry", "none"});
}

TEST_F(Doctor, LooksAtRuleModulesHelpAndLog) {
    corvane.folder.write("broken/a.so", "no module");
    const std::string whole =
        TemporaryFolder::readFile(CORVANE_BUILD_DIR "/lib/rules/partrules.so");
    corvane.folder.write("cut/b.so", whole.substr(0, 4096));
    expectTold("wrong  b.so .*cut off", {"--modules", "@cut"});
    corvane.folder.write("other/readme.txt", "");
    fs::copy_file(CORVANE_BUILD_DIR "/lib/QorScriptHost.so", corvane.folder.path("other/b.so"));
    expectTold("wrong  a.so .*won't load: ", {"--modules", "@broken"});
    expectTold("wrong  b.so .*does not export CreateQorRule", {"--modules", "@other"});
    expectTold("wrong  folder +/.*/none is no", {"--modules", "@none"});
    expectTold("note   partrules.so .*is hidden", {"--modules", CORVANE_BUILD_DIR "/lib/rules/."});

    help_.set(corvane.folder.path("other").c_str());
    expectTold("wrong  topic file +there is no /.*QORHelpIDs.h");
    help_.set(nullptr);
    corvane.folder.write("log", "kept");
    log_.set(corvane.folder.path("log").c_str());
    level_.set("12 or so");
    expectTold("ok     QOR_EXECUTION_LEVEL +12 or so: warning, error\n");
    EXPECT_EQ(corvane.folder.read("log"), "kept");
    fs::create_symlink("new", corvane.folder.path("link"));
    log_.set(corvane.folder.path("link").c_str());
    expectTold("ok     QOR_EXECUTION_LOG .*/link");
    EXPECT_TRUE(fs::is_symlink(corvane.folder.path("link")));
    EXPECT_FALSE(corvane.folder.exists("new"));
    log_.set(nullptr);
    level_.set("all");
    expectTold("wrong  QOR_EXECUTION_LEVEL +\"all\" is no number");
    log_.set(corvane.folder.path("none/log").c_str());
    expectTold("wrong  QOR_EXECUTION_LOG .*/none/log cannot be written");
}

TEST_F(Doctor, LooksAtTheDatabaseAndShowsNoPassword) {
    corvane.folder.write("file.db", std::string(4096, 'x'));
    corvane.folder.write("folder/inside", "");
    const std::string file = "FileName=" + corvane.folder.path();
    const struct {
        std::string settings;
        const char* told;
    } cases[] = {
        {file + "/file.db\n", "wrong  connection .*/file.db: "},
        {file + "/folder\n", "wrong  connection .*/folder\" is a folder"},
        {"FileName=%NO_SUCH_ROOT%/a\n", "wrong  FileName .*\"NO_SUCH_ROOT\" is not set"},
        {file + "/file.db/a\n", "wrong  connection .*may not make it"},
        {file + "/new.db\nFileName=b\n", "note   FileName .*not read: an earlier one"},
        {file + "/new.db\n", "note   connection .*/new.db is not there"},
        {"module1=none.dll\n", "wrong  driver module +there is no none.dll"},
        {"DatabaseType=mssql\nConnectionString=UID=a;PWD=secret\n",
         "wrong  driver module +none is"},
        {"DatabaseType=mssql\nConnectionString=UID=a;PWD=secret", "wrong  driver module +none is"},
    };
    for (const auto& [settings, told] : cases) {
        writeSettings(kDatabase + settings);
        expectTold(told);
        EXPECT_THAT(corvane("doctor", {}).out, Not(HasSubstr("secret")));
    }
    EXPECT_FALSE(corvane.folder.exists("new.db"));
    EXPECT_EQ(corvane("db", {}).status, 1);
    writeSettings("");
    const EnvironmentScope databases("CORVANE_DATABASE_DIR", corvane.folder.path("folder"));
    expectTold("wrong  database folder .*/folder has no separator");
    writeSettings(kDatabase + file + "/new.db\n");
    EXPECT_EQ(corvane("db", {"drills"}).status, 0);
    expectTold("ok     connection .*/new.db: open, reference tables of version [0-9]+\n");
}

TEST_F(Doctor, RunsWithoutTheModulesThatItMisses) {
    // Copies, since the library's file tells where the others are.
    for (const char* file : {"bin/corvane", "lib/libCorvaneFrameworku.so.0.1"}) {
        fs::create_directories(fs::path(corvane.folder.path(file)).parent_path());
        fs::copy_file(fs::path(CORVANE_BUILD_DIR) / file, corvane.folder.path(file));
    }
    corvane.folder.write("Lang/french/CorvaneFrameworkResu.so", "no module");
    corvane.folder.write("lib/libOther.so.0.1.0", "");
    corvane.folder.write("rules.xml", ruleFile(scriptRule("r", "a.lua")));
    const std::string program = corvane.folder.path("bin/corvane");
    const EnvironmentScope language("LC_ALL", "fr_FR");
    const ProcessResult result = runProcess({program, "doctor"});
    EXPECT_EQ(result.status, 1) << result.err;
    for (const char* told :
         {"language module +there is no /.*/Lang/english/CorvaneFrameworkResu.dll",
          "libOther.so.0.1 +/.*/lib/libOther.so.0.1 is not there",
          "XML parser +The module CorvaneXmlParser, which this document needs, is missing",
          "module +there is no QorScriptHost.dll", "collector module +there is no /"})
        EXPECT_THAT(result.out, ContainsRegex(std::string("  wrong  ") + told));
    EXPECT_THAT(result.out, ContainsRegex("  ok     language +french, the language of the user"));

    const ProcessResult run = runProcess({program, "run", corvane.folder.path("rules.xml")});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, ContainsRegex("rules.xml: the language module .* cannot be loaded"));
    const ProcessResult database = runProcess({program, "db", "thread", "M6"});
    EXPECT_EQ(database.status, 1);
    EXPECT_THAT(database.err, HasSubstr("the collector module: there is no /"));
}

}  // namespace
