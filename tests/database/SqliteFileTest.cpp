// What the driver for database files makes of the files that it meets.

#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DriverTest.h"
#include "support/OrdinaryUser.h"

namespace {

namespace fs = std::filesystem;

Opened openFile(const CStringW& file, bool mayCreate = false) {
    return openDatabase(u"QorSqliteDatabaseu.dll", file, mayCreate);
}

class SqliteFileTest : public testing::Test {
protected:
    Opened open(const char* name = "rules.dat", bool mayCreate = false) {
        return openFile(folder.wide(name), mayCreate);
    }
    /// A file with a table of `rows` rows, closed again.
    void make(const char* name = "rules.dat", const char16_t* mode = u"PRAGMA journal_mode=DELETE",
              int rows = 3) {
        const Opened made = open(name, true);
        ASSERT_THAT(made.status, IsOk());
        ASSERT_THAT(run(*made, mode), IsOk());
        ASSERT_THAT(run(*made, u"CREATE TABLE kept (whole BIGINT, words TEXT)"), IsOk());
        ASSERT_THAT(run(*made,
                        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                        u"?) INSERT INTO kept SELECT i, 'some text of a row ' || i FROM n",
                        {rows}),
                    IsOk());
    }
    void allow(const char* name, unsigned rights) {
        fs::permissions(folder.path(name), static_cast<fs::perms>(rights));
    }

    const TemporaryFolder folder;
};

Value rowsOf(IDatabaseConnection& connection) {
    return valueOf(connection, u"SELECT count(*) FROM kept");
}

TEST_F(SqliteFileTest, TellsWhyAFileDoesNotOpen) {
    make();
    make("long.dat", u"PRAGMA journal_mode=DELETE", 2000);
    std::string bytes = folder.read("long.dat");
    ASSERT_GT(bytes.size(), 10 * 4096U);
    folder.write("short.dat", bytes.substr(0, bytes.size() / 2));
    bytes.replace(3 * 4096, 64, 64, '\xEE');
    folder.write("inside.dat", bytes);
    folder.write("text.dat", std::string(5000, 'x'));
    fs::create_directory(folder.path("folder"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder.path("link"));
    using enum ErrorCode;
    const std::pair<CStringW, ErrorCode> kCases[] = {
        {folder.wide("none.dat"), Missing},
        {folder.wide("none/none.dat"), Missing},
        {folder.wide("link"), Missing},
        {u"", Missing},
        {u":memory:", Missing},
        {u"file:" + folder.wide("rules.dat"), Missing},
        {folder.wide("rules.dat") + u"?mode=ro", Missing},
        {CStringW(folder.wide("rules.dat").Std() + u'\0'), CannotOpen},
        {folder.wide("rules.dat") + u"/none.dat", Missing},
        {folder.wide("folder"), CannotOpen},
        {folder.wide("pipe"), CannotOpen},
        {folder.wide("text.dat"), Damaged},
        {folder.wide("short.dat"), Damaged},
        {folder.wide("inside.dat"), Damaged}};
    for (const auto& [file, code] : kCases)
        EXPECT_THAT(openFile(file).status, Fails(code)) << file.ToUtf8();
    EXPECT_THAT(open("rules.dat/none.dat", true).status, Fails(ErrorCode::CannotOpen));
    EXPECT_THAT(open("folder", true).status, Fails(ErrorCode::CannotOpen));
}

TEST_F(SqliteFileTest, OpensUnusualNames) {
    for (const char* name : {"a b%20?&#.dat", "file:x", "\u00FC\u4E2D.dat", "new/folder/x.dat"}) {
        make(name);
        EXPECT_EQ(rowsOf(*open(name)), Value(3)) << name;
        EXPECT_TRUE(folder.exists(name));
    }
    fs::create_symlink("file:x", folder.path("link"));
    EXPECT_EQ(rowsOf(*open("link")), Value(3));
    folder.write("empty.dat", "");
    EXPECT_TRUE(*open("empty.dat")->isEmpty());
}

TEST_F(SqliteFileTest, OpensReadOnlyFilesForReading) {
    make("plain/rules.dat");
    make("l%20#ü?/rules.dat", u"PRAGMA journal_mode=WAL");
    allow("", 0755);
    for (const char* name : {"plain", "l%20#ü?"}) {
        for (const unsigned folderRights : {0555U, 0755U}) {
            const std::string file = std::string(name) + "/rules.dat";
            allow(file.c_str(), 0444);
            allow(name, folderRights);
            const OrdinaryUser user;
            const Opened reader = open(file.c_str());
            ASSERT_THAT(reader.status, IsOk()) << file;
            EXPECT_TRUE(reader->readOnly());
            EXPECT_EQ(rowsOf(*reader), Value(3));
            EXPECT_THAT(reader->begin(), Fails(ErrorCode::ReadOnly));
            EXPECT_THAT(run(*reader, u"DELETE FROM kept"), Fails(ErrorCode::ReadOnly));
        }
    }
}

TEST_F(SqliteFileTest, ReadsALogThatIsInUse) {
    make("rules.dat", u"PRAGMA journal_mode=WAL");
    Opened writer = open();
    ASSERT_THAT(run(*writer, u"INSERT INTO kept (whole) VALUES (4)"), IsOk());
    fs::copy(folder.path("rules.dat"), folder.path("copy.dat"));
    fs::copy(folder.path("rules.dat-wal"), folder.path("copy.dat-wal"));
    for (const char* name : {"rules.dat", "rules.dat-wal", "rules.dat-shm", "copy.dat"})
        allow(name, 0444);
    allow("", 0555);
    {
        const OrdinaryUser user;
        const Opened reader = open();
        ASSERT_THAT(reader.status, IsOk());
        EXPECT_EQ(rowsOf(*reader), Value(4));
        EXPECT_THAT(open("copy.dat").status, Fails(ErrorCode::CannotOpen));
    }
    for (const char* name : {"", "rules.dat", "rules.dat-wal", "rules.dat-shm", "copy.dat"})
        allow(name, 0755);
    EXPECT_EQ(rowsOf(*open("copy.dat")), Value(4));
}

TEST_F(SqliteFileTest, KeepsEveryValue) {
    using Real = std::numeric_limits<double>;
    const Value kValues[] = {1.0 / 3,           Real::max(), Real::denorm_min(),  Real::infinity(),
                             -Real::infinity(), Bytes(),     CStringW(u"a\0b", 3)};
    make();
    const Opened opened = open();
    for (const Value& value : kValues) {
        const auto query = opened->prepare(u"SELECT ?");
        ASSERT_THAT((*query)->execute({value}), IsOk());
        ASSERT_TRUE((*query)->next());
        EXPECT_EQ((*query)->row()[0], value);
    }
}

TEST_F(SqliteFileTest, ReadsWhileAnotherConnectionWrites) {
    make();
    const Opened writer = open();
    const Opened reader = open();
    const auto slow = reader->prepare(u"SELECT whole FROM kept");
    ASSERT_THAT(writer->begin(), IsOk());
    ASSERT_THAT(run(*writer, u"DELETE FROM kept"), IsOk());
    // More than the database's cache holds.
    ASSERT_THAT(run(*writer, u"INSERT INTO kept (words) VALUES (zeroblob(10000000))"), IsOk());
    EXPECT_EQ(rowsOf(*reader), Value(3));
    ASSERT_THAT((*slow)->execute({}), IsOk());
    EXPECT_TRUE((*slow)->next());
    // Not before the last reader has read to the end, and the transaction waits for it.
    EXPECT_THAT(writer->commit(), Fails(ErrorCode::Locked));
    while ((*slow)->next()) {
    }
    EXPECT_THAT(writer->commit(), IsOk());
    EXPECT_EQ(rowsOf(*reader), Value(1));
}

TEST_F(SqliteFileTest, WaitsNoLongerThanAskedForALockedFile) {
    make();
    const Opened owner = open();
    ASSERT_THAT(run(*owner, u"PRAGMA locking_mode=EXCLUSIVE"), IsOk());
    ASSERT_THAT(run(*owner, u"DELETE FROM kept"), IsOk());
    EXPECT_THAT(open().status, Fails(ErrorCode::Locked));
}

TEST_F(SqliteFileTest, SurvivesAWriterThatIsKilled) {
    for (const char16_t* mode : {u"PRAGMA journal_mode=DELETE", u"PRAGMA journal_mode=WAL"}) {
        make("killed.dat", mode, 2000);
        const pid_t child = fork();
        if (child == 0) {
            const Opened writer = open("killed.dat");
            // So small a cache writes to the file before the end of the transaction.
            const bool written = run(*writer, u"PRAGMA cache_size=2").ok() &&
                                 run(*writer, u"PRAGMA cache_spill=2").ok() &&
                                 writer->begin().ok() &&
                                 run(*writer, u"UPDATE kept SET words = words || 'more'").ok();
            _exit(written ? 0 : 1);
        }
        int ended = -1;
        ASSERT_EQ(waitpid(child, &ended, 0), child);
        ASSERT_EQ(ended, 0);
        ASSERT_TRUE(folder.exists("killed.dat-journal") || folder.exists("killed.dat-wal"));
        const Opened next = open("killed.dat");
        ASSERT_THAT(next.status, IsOk());
        EXPECT_EQ(valueOf(*next, u"SELECT count(*) FROM kept WHERE words LIKE '%more'"), Value(0));
        EXPECT_EQ(rowsOf(*next), Value(2000));
        ASSERT_TRUE(fs::remove(folder.path("killed.dat")));
    }
}

TEST_F(SqliteFileTest, CountsATransactionAsAWhole) {
    make();
    const Opened opened = open();
    ASSERT_THAT(run(*opened, u"PRAGMA max_page_count=20"), IsOk());
    ASSERT_THAT(opened->begin(), IsOk());
    ASSERT_THAT(run(*opened, u"DELETE FROM kept WHERE whole = 1"), IsOk());
    const auto fill = opened->prepare(u"INSERT INTO kept (words) VALUES (zeroblob(?))");
    EXPECT_THAT((*fill)->execute({200000}), Fails(ErrorCode::StorageFull));
    EXPECT_THAT(opened->rollback(), IsOk());
    EXPECT_EQ(rowsOf(*opened), Value(3));
    EXPECT_THAT((*fill)->execute({10}), IsOk());

    ASSERT_THAT(run(*opened, u"CREATE UNIQUE INDEX one ON kept (whole)"), IsOk());
    ASSERT_THAT(opened->begin(), IsOk());
    EXPECT_THAT(run(*opened, u"INSERT OR ROLLBACK INTO kept (whole) VALUES (1)"),
                Fails(ErrorCode::Constraint));
    EXPECT_THAT(run(*opened, u"DELETE FROM kept"), Fails(ErrorCode::BadTransaction));
    EXPECT_THAT(opened->commit(), Fails(ErrorCode::BadTransaction));
    EXPECT_THAT(opened->rollback(), IsOk());
    EXPECT_EQ(rowsOf(*opened), Value(4));
}

TEST_F(SqliteFileTest, TakesNoForeignVersionForItsOwn) {
    make();
    const Opened opened = open();
    ASSERT_THAT(run(*opened, u"PRAGMA user_version=5"), IsOk());
    EXPECT_EQ(*opened->schemaVersion(), 0);
    EXPECT_THAT(opened->setSchemaVersion(1), Fails(ErrorCode::Failed));
    EXPECT_EQ(valueOf(*opened, u"PRAGMA user_version"), Value(5));
    EXPECT_EQ(valueOf(*opened, u"PRAGMA application_id"), Value(0));
}

TEST_F(SqliteFileTest, DoesNotTrustTheSchemaOfAFile) {
    make();
    const Opened opened = open();
    ASSERT_THAT(run(*opened, u"PRAGMA writable_schema=ON"), IsOk());
    ASSERT_THAT(run(*opened, u"CREATE VIEW trap AS SELECT load_extension('x') FROM kept"), IsOk());
    ASSERT_THAT(run(*opened, u"CREATE VIEW spy AS SELECT * FROM pragma_table_info('kept')"),
                IsOk());
    const std::u16string_view kRefused[] = {u"SELECT * FROM trap",
                                            u"SELECT * FROM spy",
                                            u"SELECT load_extension('x')",
                                            u"UPDATE sqlite_schema SET sql = 'x'",
                                            u"ATTACH 'other.dat' AS other",
                                            u"VACUUM INTO 'other.dat'",
                                            u"SELECT hex(zeroblob(400000000))",
                                            u"SELECT \"no such column\" FROM kept"};
    for (const std::u16string_view text : kRefused)
        EXPECT_FALSE(run(*opened, text).ok()) << CStringW(text).ToUtf8();
    EXPECT_THAT(run(*opened, u"VACUUM"), IsOk());
}

TEST_F(SqliteFileTest, EndsAStatementThatNeverEnds) {
    make();
    const Opened opened = openDatabase(u"QorSqliteDatabaseu.dll", folder.wide("rules.dat"), false,
                                       50, kDriverInterfaceVersion, 100);
    EXPECT_THAT(run(*opened,
                    u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) "
                    u"SELECT max(i) FROM n"),
                Fails(ErrorCode::TimedOut));
    EXPECT_EQ(rowsOf(*opened), Value(3));
}

TEST_F(SqliteFileTest, GivesTheRowsOfAChangeThatIsDone) {
    make();
    const Opened opened = open();
    const auto query = opened->prepare(u"DELETE FROM kept WHERE whole < 3 RETURNING whole");
    ASSERT_THAT((*query)->execute({}), IsOk());
    EXPECT_EQ((*query)->changedRows(), 2);
    EXPECT_EQ(rowsOf(*open()), Value(1));
    EXPECT_TRUE((*query)->next());
    EXPECT_TRUE((*query)->next());
    EXPECT_EQ((*query)->row()[0], Value(2));
    EXPECT_FALSE((*query)->next());

    const auto all = opened->prepare(u"SELECT * FROM kept");
    ASSERT_THAT(run(*opened, u"ALTER TABLE kept ADD COLUMN later"), IsOk());
    ASSERT_THAT((*all)->execute({}), IsOk());
    EXPECT_THAT((*all)->columns(), testing::ElementsAre(u"whole", u"words", u"later"));
}

}  // namespace
