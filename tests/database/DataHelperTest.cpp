// The connection that a process gets, in an install tree with a collector module that takes notes.

#include <filesystem>
#include <gtest/gtest.h>

#include "cli/Process.h"
#include "support/EnvironmentScope.h"

namespace {

namespace fs = std::filesystem;

class DataHelper : public testing::Test {
protected:
    DataHelper() {
        fs::create_directories(tree.path("lib"));
        fs::copy(fs::canonical(CORVANE_BUILD_DIR "/lib/libCorvaneFrameworku.so"),
                 tree.path("lib/libCorvaneFrameworku.so.0.1"));
        fs::copy(RECORDING_COLLECTOR, tree.path("lib/qordatabaseU.so"));
    }

    void configure(std::string_view text) const {
        tree.write("data/Settings/ConfigModule.ini", text);
    }

    // What the process said, and what the collector module noted.
    std::string ask(const std::vector<std::string>& connectAnew = {}) const {
        fs::remove(tree.path("record"));
        std::vector<std::string> command{PROBE};
        command.insert(command.end(), connectAnew.begin(), connectAnew.end());
        const ProcessResult result = runProcess(command);
        EXPECT_EQ(result.status, 0) << result.err;
        std::string all = result.out + tree.read("record");
        for (std::size_t at; (at = all.find(tree.path())) != all.npos;)
            all.replace(at, tree.path().size(), "~");
        return all;
    }

    const TemporaryFolder tree;
    const EnvironmentScope library{"LD_LIBRARY_PATH", tree.path("lib")};
    const EnvironmentScope record{"RECORD", tree.path("record")};
    const EnvironmentScope data{"CORVANE_DATA_DIR", tree.path("data")};
    const EnvironmentScope database{"CORVANE_DATABASE_DIR", tree.path("data") + "/"};
    const EnvironmentScope root{"ROOT", "/p\xC3\xA9"};
    const EnvironmentScope unset{"UNSET_ROOT", nullptr};
};

TEST_F(DataHelper, ConnectsByTheConfiguration) {
    const std::string head = "[RULE_DATABASE_MODULES]\n";
    const std::string driver = "~/lib/QorSqliteDatabaseu.dll";
    const std::string file = "~/data/qorSqliteDb.dat";
    const std::string longest(49, 'N'), tooLong(50, 'N');
    const EnvironmentScope first(longest.c_str(), "/v"), second(tooLong.c_str(), "/w");
    const std::pair<std::string, std::string> cases[] = {
        {"", "sqlite " + driver + " | " + file},
        {head + "DatabaseType=Oracle\nConnectionString=x", "sqlite " + driver + " | " + file},
        {head + "FileName=C:\\a b.dat", "sqlite " + driver + " | C:\\a b.dat"},
        {head + "module1=%ROOT%\\drv\\x.dll", "sqlite /p\xC3\xA9\\drv\\x.dll | " + file},
        {head + "module1=%UNSET_ROOT%\\drv\\x.dll\nfilename=%ROOT%",
         "sqlite \\drv\\x.dll | /p\xC3\xA9"},
        {head + "module1=%x.dll\nFileName=?ROOT%\\%/z", "sqlite x.dll | /z"},
        {head + "module1=?ROOT%.dll", "sqlite /p\xC3\xA9.dll | " + file},
        {head + "FileName=%" + longest + "%/z", "sqlite " + driver + " | /v/z"},
        {head + "FileName=%" + tooLong + "%/z", "sqlite " + driver + " | /z"},
        // Each unit of the name counts by its low byte: U+0152 is "R".
        {head + "FileName=%\xC5\x92OOT%/z", "sqlite " + driver + " | /p\xC3\xA9/z"},
        {head + "module1=%UNSET_ROOT%", "sqlite  | " + file},
        {head + "FileName=" + std::string(300, 'f'),
         "sqlite " + driver + " | " + std::string(259, 'f')},
        {head + "DatabaseType=mssql\nmodule1=%ROOT%/odbc.dll\nConnectionString=Server=%ROOT%;PWD=x",
         "mssql /p\xC3\xA9/odbc.dll | Server=%ROOT%;PWD=x"},
        {head + "DatabaseType=MSSQL\nFileName=x", "mssql  | "},
    };
    EXPECT_EQ(ask(), "collector\n" + cases[0].second + "\ndestroy 1\n") << "without a file";
    for (const auto& [config, connector] : cases) {
        configure(config);
        EXPECT_EQ(ask(), "collector\n" + connector + "\ndestroy 1\n") << config;
    }
}

TEST_F(DataHelper, HoldsTheCollectorOfTheLastConnection) {
    configure("[RULE_DATABASE_MODULES]\nmodule1=m\nFileName=f\nConnectionString=c");
    EXPECT_EQ(ask({tree.path("data/Settings/ConfigModule.ini")}),
              "collector\nsqlite m | f\nsqlite m | f\nmssql m | c\ndestroy 3\n");
}

TEST_F(DataHelper, GivesNoCollectorWithoutAModuleThatMakesOne) {
    {
        const EnvironmentScope fails("CREATE_FAILS", "1");
        EXPECT_EQ(ask().substr(0, 5), "none\n");
        EXPECT_EQ(ask().find("destroy"), std::string::npos);
        const EnvironmentScope throws("CREATE_FAILS", "throws");
        EXPECT_EQ(ask().substr(0, 5), "none\n");
        EXPECT_NE(ask().find("caught\n"), std::string::npos);
    }
    const fs::path module = tree.path("lib/qordatabaseU.so");
    fs::remove(module);
    EXPECT_EQ(ask(), "none\n");
    fs::copy(fs::canonical(CORVANE_BUILD_DIR "/lib/QorSqliteDatabaseu.so"), module);
    EXPECT_EQ(ask(), "none\n");
    tree.write("lib/qordatabaseU.so", "no module");
    EXPECT_EQ(ask(), "none\n");
}

TEST_F(DataHelper, TakesTheFolderOfTheEnvironmentOnlyWhenItExists) {
    database.set(tree.path("absent").c_str());
    EXPECT_NE(ask().find(" | /var/lib/TessalyLtd/Corvane/QORDataBase/qorSqliteDb.dat\n"),
              std::string::npos);
    database.set(tree.path("data").c_str());
    EXPECT_NE(ask().find(" | ~/dataqorSqliteDb.dat\n"), std::string::npos);
}

}  // namespace
