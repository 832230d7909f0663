// Opening, versions, rights, locks and ends of processes, through the real driver.

#include "database/CollectorTest.h"

#include <csignal>
#include <filesystem>
#include <sys/wait.h>

#include "cli/Process.h"
#include "support/EnvironmentScope.h"
#include "support/OrdinaryUser.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kFile = "qorSqliteDb.dat";
constexpr int kNewest = 2;

class Collector : public testing::Test {
protected:
    CStringW file(const char* name = kFile) const { return folder.wide(name); }

    Opened driver() const { return openDatabase(kSqliteDriver, file()); }

    void makeFile() const { const CollectorScope collector(file()); }

    // Gives the file a version, as another release would have left it.
    void setVersion(int version) const {
        const Opened database = driver();
        ASSERT_THAT(database->begin(), IsOk());
        ASSERT_THAT(database->setSchemaVersion(version), IsOk());
        ASSERT_THAT(database->commit(), IsOk());
    }

    const TemporaryFolder folder;
};

Value rowsIn(IDatabaseCollector& collector, const CStringW& table) {
    return valueOf(collector, u"SELECT count(*) FROM " + table);
}

// How a child process has ended, as waitpid tells it.
int endOf(pid_t child) {
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

// The whole of it: tables, rows and the right to change them.
void expectWorks(const CollectorScope& collector) {
    EXPECT_THAT(collector->status(), IsOk());
    EXPECT_EQ(collector->connection().schemaVersion, kNewest);
    EXPECT_THAT(collector.reference().thread(u"M6").status(), IsOk());
    EXPECT_THAT(collector.reference().minimumWall(u"FDM", u"any").status(), IsOk());
    {
        const Transaction forgotten(*collector);
        EXPECT_THAT(run(*collector, u"DELETE FROM qor_material"), IsOk());
        EXPECT_EQ(rowsIn(*collector, u"qor_material"), Value(0));
    }
    EXPECT_NE(rowsIn(*collector, u"qor_material"), Value(0));
}

TEST_F(Collector, MakesAMissingFileWithItsFolder) {
    const CollectorScope collector(folder.wide("new\\folder/rules.dat"));
    expectWorks(collector);
    EXPECT_TRUE(folder.exists("new/folder/rules.dat"));
    const ConnectionInfo info = collector->connection();
    EXPECT_TRUE(info.open);
    EXPECT_FALSE(info.readOnly);
    EXPECT_EQ(info.database, folder.wide("new\\folder/rules.dat"));
    EXPECT_EQ(info.driverModule, kSqliteDriver);
}

TEST_F(Collector, SaysWhyADatabaseIsNotOpen) {
    folder.write("damaged.dat", std::string(5000, 'x'));
    folder.write("nomodule.so", "text");
    fs::create_directory(folder.path("folder.dat"));
    const std::tuple<CStringW, CStringW, ErrorCode, const char16_t*> cases[] = {
        {u"", file(), ErrorCode::DriverNotLoaded, u"module1"},
        {folder.wide("absent.dll"), file(), ErrorCode::DriverNotLoaded, u"absent.dll"},
        {folder.wide("nomodule.dll"), file(), ErrorCode::DriverNotLoaded, u"cannot be loaded"},
        {u"QORDatabaseu.dll", file(), ErrorCode::DriverNotLoaded, u"openQorDatabase"},
        {FAKE_DRIVER, u"nothing", ErrorCode::Failed, u"no reason"},
        {FAKE_DRIVER, u"x", ErrorCode::Unreachable, u"login failed"},
        {FAKE_DRIVER, u"throws", ErrorCode::Failed, u"unknown type"},
        {kSqliteDriver, u"", ErrorCode::Missing, u"configured"},
        {kSqliteDriver, file("damaged.dat"), ErrorCode::Damaged, u""},
        {kSqliteDriver, file("folder.dat"), ErrorCode::CannotOpen, u"folder.dat"},
        {kSqliteDriver, file("damaged.dat/x.dat"), ErrorCode::CannotOpen, u"x.dat"},
    };
    for (const auto& [driverModule, target, code, said] : cases) {
        const CollectorScope collector(target, driverModule);
        EXPECT_THAT(collector->status(), Fails(code)) << driverModule.ToUtf8();
        EXPECT_GE(collector->status().message.Find(said), 0);
        EXPECT_FALSE(collector->connection().open);
        EXPECT_THAT(collector->begin(), Fails(ErrorCode::NotOpen));
        EXPECT_THAT(collector->installSchema(), Fails(ErrorCode::NotOpen));
        EXPECT_THAT(collector->prepare(u"SELECT 1").status(), Fails(ErrorCode::NotOpen));
        EXPECT_THAT(collector.reference().materials().status(), Fails(ErrorCode::NotOpen));
        EXPECT_THAT(collector->open(), Fails(code));
    }
    EXPECT_EQ(folder.read("damaged.dat"), std::string(5000, 'x'));
}

TEST_F(Collector, LetsItsThreadBeCancelled) {
    pthread_t thread;
    void* ended = nullptr;
    const auto open = [](void*) -> void* {
        const CollectorScope collector(MSSQLConnectorData(FAKE_DRIVER, u"cancels"));
        return nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, nullptr, open, nullptr), 0);
    ASSERT_EQ(::pthread_join(thread, &ended), 0);
    EXPECT_EQ(ended, PTHREAD_CANCELED);
}

TEST_F(Collector, ShowsNoPassword) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"Server=a;UID=sa;PWD=hush;", u"Server=a;UID=sa;PWD=***;"},
        {u"Password={hu;s}}h};Server=a", u"Password=***;Server=a"},
        {u"Server=a;PASSWORD=\"hu;sh\"", u"Server=a;PASSWORD=***"},
        {u"PWD={hush;Server=a", u"PWD=***"},
        {u"Server='a;PWD={hush;PWD=hu}", u"Server='a;PWD=***"},
        {u"Access Token=hush;PWD=", u"Access Token=***;PWD="},
        {u"PWD==hush;;Server=a", u"PWD=***;;Server=a"},
    };
    for (const auto& [target, shown] : cases) {
        const CollectorScope collector(MSSQLConnectorData(FAKE_DRIVER, target));
        EXPECT_EQ(collector->connection().database, shown);
        EXPECT_THAT(collector->status(), Fails(ErrorCode::Unreachable));
        EXPECT_EQ(collector->status().message.Find(u"hu"), -1);
        EXPECT_EQ(collector->begin().message.Find(u"hu"), -1);
    }
    const CollectorScope same(MSSQLConnectorData(FAKE_DRIVER, u"UID=sa;PWD=sa"));
    EXPECT_EQ(same->connection().database, u"UID=sa;PWD=***");
    const CollectorScope file(CStringW(u"/x/PWD=y"), FAKE_DRIVER);
    EXPECT_EQ(file->connection().database, u"/x/PWD=y");
}

TEST_F(Collector, LeavesADatabaseOnAServerAloneUntilItIsAsked) {
    const MSSQLConnectorData server(kSqliteDriver, file());
    EXPECT_THAT(CollectorScope(server)->status(), Fails(ErrorCode::Missing));
    driver();
    const CollectorScope collector(server);
    EXPECT_THAT(collector->status(), Fails(ErrorCode::NoSchema));
    EXPECT_THAT(collector.reference().drillSizes(true).status(), Fails(ErrorCode::NoSchema));
    ASSERT_THAT(collector->installSchema(), IsOk());
    expectWorks(collector);
}

TEST_F(Collector, KeepsTheTablesOfASite) {
    ASSERT_THAT(run(*driver(), u"CREATE TABLE parts AS SELECT 7 AS number"), IsOk());
    const CollectorScope collector(file());
    EXPECT_THAT(collector->status(), Fails(ErrorCode::NoSchema));
    EXPECT_TRUE(collector->connection().open);
    EXPECT_EQ(rowsIn(*collector, u"parts"), Value(1));
    ASSERT_THAT(collector->begin(), IsOk());
    EXPECT_THAT(collector->installSchema(), Fails(ErrorCode::BadTransaction));
    ASSERT_THAT(collector->rollback(), IsOk());
    ASSERT_THAT(collector->installSchema(), IsOk());
    expectWorks(collector);
    EXPECT_EQ(rowsIn(*collector, u"parts"), Value(1));
}

TEST_F(Collector, UpgradesTheTablesOfAnOlderReleaseOrLeavesThem) {
    makeFile();
    setVersion(1);  // whose rows are in the way of the new ones
    EXPECT_THAT(CollectorScope(file())->status(), Fails(ErrorCode::Constraint));
    const Opened database = driver();
    EXPECT_EQ(*database->schemaVersion(), 1);
    EXPECT_EQ(valueOf(*database, u"SELECT count(*) FROM qor_clearance_hole"), Value(35));
    for (const char16_t* table : {u"drill_size", u"thread", u"clearance_hole", u"material",
                                  u"bend_radius", u"minimum_wall"})
        ASSERT_THAT(run(*database, CStringW(u"DELETE FROM qor_") + table), IsOk());
    EXPECT_THAT(CollectorScope(MSSQLConnectorData(kSqliteDriver, file()))->status(),
                Fails(ErrorCode::NoSchema));
    expectWorks(CollectorScope(file()));
}

TEST_F(Collector, LeavesQueriesAndTransactionsToTheirOwners) {
    auto collector = std::make_unique<CollectorScope>(file());
    const auto query = (*collector)->prepare(u"SELECT * FROM qor_clearance_hole");
    Transaction outer(**collector), inner(**collector);
    EXPECT_THAT(inner.commit(), Fails(ErrorCode::BadTransaction));
    EXPECT_THAT(outer.commit(), IsOk());
    collector.reset();
    ASSERT_THAT((*query)->execute({}), IsOk());
    EXPECT_TRUE((*query)->next());
}

TEST_F(Collector, RefusesTheTablesOfANewerReleaseAndRunsQueries) {
    makeFile();
    setVersion(kNewest + 1);
    const CollectorScope collector(file());
    EXPECT_THAT(collector->status(), Fails(ErrorCode::NewerVersion));
    EXPECT_THAT(collector.reference().thread(u"M6").status(), Fails(ErrorCode::NewerVersion));
    EXPECT_THAT(collector->installSchema(), Fails(ErrorCode::NewerVersion));
    EXPECT_EQ(rowsIn(*collector, u"qor_clearance_hole"), Value(35));
    EXPECT_EQ(collector->connection().schemaVersion, kNewest + 1);
    setVersion(kNewest);
    EXPECT_THAT(collector->open(), IsOk());
    expectWorks(collector);
}

TEST_F(Collector, WorksByTheRightsOfItsUser) {
    makeFile();
    folder.write("empty.dat", "");
    for (const char* name : {kFile, "empty.dat"})
        fs::permissions(folder.path(name), fs::perms(0444));
    fs::permissions(folder.path(), fs::perms(0555));
    const OrdinaryUser user;
    const CollectorScope collector(file());
    EXPECT_THAT(collector->status(), IsOk());
    EXPECT_TRUE(collector->connection().readOnly);
    EXPECT_THAT(collector.reference().thread(u"M6").status(), IsOk());
    EXPECT_THAT(run(*collector, u"DELETE FROM qor_thread"), Fails(ErrorCode::ReadOnly));
    const CollectorScope empty(file("empty.dat"));
    EXPECT_THAT(empty->status(), Fails(ErrorCode::ReadOnly));
    EXPECT_THAT(empty.reference().thread(u"M6").status(), Fails(ErrorCode::ReadOnly));
    EXPECT_EQ(rowsIn(*empty, u"sqlite_master"), Value(0));
    for (const char* name : {"new.dat", "new/x.dat"})
        EXPECT_THAT(CollectorScope(file(name))->status(), Fails(ErrorCode::CannotOpen));
}

TEST_F(Collector, SaysThatAnotherOneHoldsTheLock) {
    const CollectorScope collector(file());
    collector->setTimeout(30);
    const Opened other = driver();
    ASSERT_THAT(other->begin(), IsOk());
    ASSERT_THAT(run(*other, u"DELETE FROM qor_thread"), IsOk());
    EXPECT_THAT(collector->begin(), Fails(ErrorCode::Locked));
    EXPECT_THAT(collector.reference().thread(u"M6").status(), IsOk());
    // Another process reads while that one writes.
    const pid_t reader = fork();
    if (reader == 0) {
        const CollectorScope own(file());
        _exit(own->status().ok() && own.reference().thread(u"M6").ok() ? 0 : 1);
    }
    EXPECT_EQ(endOf(reader), 0);
    ASSERT_THAT(other->commit(), IsOk());
    EXPECT_THAT(collector.reference().thread(u"M6").status(), Fails(ErrorCode::NotFound));
    EXPECT_THAT(collector->begin(), IsOk());
}

TEST_F(Collector, LetsTheToolReadWhileSomebodyMayWrite) {
    const char* tool = CORVANE_BUILD_DIR "/bin/corvane";
    if (!fs::exists(tool)) GTEST_SKIP() << "built without the tools";
    makeFile();
    const EnvironmentScope databases("CORVANE_DATABASE_DIR", folder.path() + "/");
    const CollectorScope writer(file());
    const Transaction transaction(*writer);
    ASSERT_THAT(transaction.status(), IsOk());
    EXPECT_EQ(runProcess({tool, "db", "query", "SELECT count(*) FROM qor_thread"}).err, "");
}

TEST_F(Collector, LetsManyProcessesMakeOneFile) {
    std::vector<pid_t> children(6);
    for (pid_t& child : children) {
        child = fork();
        if (child == 0) _exit(static_cast<int>(CollectorScope(file())->status().code));
    }
    for (const pid_t child : children)
        EXPECT_EQ(WEXITSTATUS(endOf(child)), 0);
    expectWorks(CollectorScope(file()));
}

TEST_F(Collector, OpensWhatAKilledProcessHasLeft) {
    makeFile();
    const pid_t writer = fork();
    if (writer == 0) {
        const CollectorScope collector(file());
        if (collector->begin().ok() && run(*collector, u"DELETE FROM qor_thread").ok() &&
            run(*collector, u"CREATE TABLE big AS SELECT zeroblob(9000000) AS rows").ok())
            std::raise(SIGKILL);
        _exit(1);
    }
    EXPECT_EQ(endOf(writer), SIGKILL);
    expectWorks(CollectorScope(file()));
    // While the tables are made, at any moment.
    for (useconds_t moment = 0; moment < 40'000; moment += 1'500) {
        const CStringW made = file(("made" + std::to_string(moment)).c_str());
        const pid_t maker = fork();
        if (maker == 0) {
            const CollectorScope collector(made);
            pause();
        }
        usleep(moment);
        kill(maker, SIGKILL);
        EXPECT_EQ(endOf(maker), SIGKILL);
        expectWorks(CollectorScope(made));
    }
}

}  // namespace
