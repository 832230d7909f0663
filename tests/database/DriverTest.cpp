// What every driver does alike.

#include "DriverTest.h"

#include <limits>

namespace {

struct Driver {
    const char* name;
    const char16_t* module;
    CStringW (*target)(const CStringW& file);

    friend void PrintTo(const Driver& driver, std::ostream* out) { *out << driver.name; }
};

class DriverTest : public testing::TestWithParam<Driver> {
protected:
    Opened open(const char* file = "rules.dat") {
        return openDatabase(GetParam().module, GetParam().target(folder.wide(file)));
    }
    void SetUp() override {
        ASSERT_THAT(first.status, IsOk());
        EXPECT_TRUE(*first->isEmpty());
        ASSERT_THAT(run(*first,
                        u"CREATE TABLE kept (whole BIGINT UNIQUE, real DOUBLE, "
                        u"words TEXT, raw BLOB)"),
                    IsOk());
        ASSERT_THAT(run(*first, u"INSERT INTO kept (whole) VALUES (1), (2), (3)"), IsOk());
    }
    Value count() { return valueOf(*first, u"SELECT count(*) FROM kept"); }

    const TemporaryFolder folder;
    Opened first = open();
};

CStringW repeated(std::u16string_view text, int times) {
    CStringW result;
    while (times-- > 0)
        result.Append(text);
    return result;
}

TEST_P(DriverTest, KeepsTypedValues) {
    using Whole = std::numeric_limits<std::int64_t>;
    const Bytes bytes{std::byte{0}, std::byte{0xFF}, std::byte{0}};
    const std::vector<std::pair<const char16_t*, std::vector<Value>>> kColumns = {
        {u"whole", {{}, 0, -1, Whole::max(), Whole::min()}},
        {u"real", {{}, 0.1, -1e-3, 1e300, 2.5e-300}},
        {u"words",
         {{},
          u"",
          u"M8x1 \u00F8 \u4E2D \xD83D\xDD29",
          u"'\"?;--",
          repeated(u"f\u00FC\u4E2D", 90000)}},
        {u"raw", {{}, bytes, Bytes(1024, std::byte{7}), Bytes(300000, std::byte{7})}},
    };
    for (const auto& [column, values] : kColumns) {
        const CStringW name = column;
        const auto insert = first->prepare(u"INSERT INTO kept (" + name + u") VALUES (?)");
        const auto select = first->prepare(u"SELECT " + name + u" FROM kept");
        ASSERT_THAT(insert.status(), IsOk());
        ASSERT_THAT(select.status(), IsOk());
        EXPECT_THAT((*select)->columns(), testing::ElementsAre(name));
        for (const Value& value : values) {
            ASSERT_THAT(run(*first, u"DELETE FROM kept"), IsOk());
            ASSERT_THAT((*insert)->execute({value}), IsOk());
            EXPECT_EQ((*insert)->changedRows(), 1);
            ASSERT_THAT((*select)->execute({}), IsOk());
            ASSERT_TRUE((*select)->next()) << name.ToUtf8();
            EXPECT_EQ((*select)->row()[0], value) << name.ToUtf8();
            EXPECT_FALSE((*select)->next());
            EXPECT_THAT((*select)->status(), IsOk());
        }
    }
}

TEST_P(DriverTest, GivesALoneSurrogateAsReplacementCharacter) {
    const char16_t kLone[] = {u'a', 0xD800, u'b', u'c', 0};
    ASSERT_THAT(run(*first, u"UPDATE kept SET words = ?", {kLone}), IsOk());
    EXPECT_EQ(valueOf(*first, u"SELECT words FROM kept"), Value(u"a\uFFFDbc"));
}

TEST_P(DriverTest, RefusesWhatIsNotOneStatement) {
    const std::u16string_view kRefused[] = {u"",
                                            u" \n",
                                            u";",
                                            u"-- comment",
                                            u"/* SELECT 1",
                                            u"SELEC",
                                            u"SELECT * FROM nowhere",
                                            u"SELECT nope FROM kept",
                                            u"SELECT 1; DROP TABLE kept",
                                            u"SELECT ';'; DROP TABLE kept",
                                            u"SELECT 1 /* ; */ ; -- \n DROP TABLE kept",
                                            u"COMMIT",
                                            u"; rollback",
                                            u"/**/BEGIN",
                                            {u"SELECT 1\0", 9}};
    for (const std::u16string_view text : kRefused)
        EXPECT_THAT(run(*first, text), Fails(ErrorCode::BadQuery)) << CStringW(text).ToUtf8();
    EXPECT_EQ(count(), Value(3));
    const std::u16string_view kTaken[] = {u"SELECT ';' AS \"a;b\" FROM kept; -- end;\n ; /* ; */",
                                          u"--\nSELECT 'it''s; ' FROM kept"};
    for (const std::u16string_view text : kTaken)
        EXPECT_THAT(run(*first, text), IsOk()) << CStringW(text).ToUtf8();
}

TEST_P(DriverTest, RefusesWrongParameters) {
    const auto query = first->prepare(u"UPDATE kept SET real = ? WHERE whole < ?");
    ASSERT_THAT(query.status(), IsOk());
    EXPECT_EQ((*query)->parameterCount(), 2);
    const std::vector<Value> kWrong[] = {
        {}, {1.5}, {1.5, 3, 4}, {std::numeric_limits<double>::quiet_NaN(), 3}};
    for (const std::vector<Value>& parameters : kWrong)
        EXPECT_THAT((*query)->execute(parameters), Fails(ErrorCode::BadParameter));
    EXPECT_EQ(valueOf(*first, u"SELECT count(real) FROM kept"), Value(0));
    ASSERT_THAT((*query)->execute({1.5, 3}), IsOk());
    EXPECT_EQ((*query)->changedRows(), 2);
    ASSERT_THAT((*query)->execute({1.5, 0}), IsOk());
    EXPECT_EQ((*query)->changedRows(), 0);
}

TEST_P(DriverTest, RunsAQueryAgainAfterAFault) {
    const auto query = first->prepare(u"INSERT INTO kept (whole) VALUES (?)");
    const Status status = (*query)->execute({2});
    EXPECT_THAT(status, Fails(ErrorCode::Constraint));
    EXPECT_NE(status.nativeCode, 0);
    EXPECT_THAT((*query)->status(), Fails(ErrorCode::Constraint));
    EXPECT_FALSE((*query)->next());
    EXPECT_THAT((*query)->execute({4}), IsOk());
    EXPECT_EQ(count(), Value(4));
}

TEST_P(DriverTest, ReadsWhileItWrites) {
    const auto reader = first->prepare(u"SELECT whole FROM kept WHERE whole < 10 ORDER BY +whole");
    ASSERT_THAT(first->begin(), IsOk());
    ASSERT_THAT((*reader)->execute({}), IsOk());
    std::vector<std::int64_t> read;
    while ((*reader)->next()) {
        read.push_back(*(*reader)->row().integer(0));
        ASSERT_THAT(run(*first, u"UPDATE kept SET whole = whole + 10 WHERE whole < 10"), IsOk());
    }
    EXPECT_THAT(read, testing::ElementsAre(1, 2, 3));
    EXPECT_FALSE((*reader)->next());
    EXPECT_TRUE((*reader)->row()[0].isNull());
    EXPECT_THAT(first->commit(), IsOk());
}

TEST_P(DriverTest, TakesTurnsAtTransactions) {
    ASSERT_THAT(first->setSchemaVersion(1), IsOk());
    const Opened second = open();
    EXPECT_THAT(first->commit(), Fails(ErrorCode::BadTransaction));
    ASSERT_THAT(first->begin(), IsOk());
    EXPECT_THAT(first->begin(), Fails(ErrorCode::BadTransaction));
    second->setTimeout(20);
    EXPECT_THAT(second->begin(), Fails(ErrorCode::Locked));
    ASSERT_THAT(run(*first, u"INSERT INTO kept (whole) VALUES (9)"), IsOk());
    EXPECT_EQ(valueOf(*second, u"SELECT count(*) FROM kept"), Value(3));
    ASSERT_THAT(first->rollback(), IsOk());
    EXPECT_THAT(first->rollback(), Fails(ErrorCode::BadTransaction));
    EXPECT_EQ(count(), Value(3));

    ASSERT_THAT(second->begin(), IsOk());
    ASSERT_THAT(run(*second, u"INSERT INTO kept (whole) VALUES (9)"), IsOk());
    EXPECT_THAT(run(*first, u"DELETE FROM kept"), Fails(ErrorCode::Locked));
    ASSERT_THAT(second->commit(), IsOk());
    EXPECT_EQ(count(), Value(4));
}

TEST_P(DriverTest, LetsAQueryOutliveItsConnection) {
    const auto query = first->prepare(u"SELECT count(*) FROM kept");
    ASSERT_THAT(first->begin(), IsOk());
    ASSERT_THAT(run(*first, u"DELETE FROM kept"), IsOk());
    first.connection.reset();
    ASSERT_THAT((*query)->execute({}), IsOk());
    ASSERT_TRUE((*query)->next());
    EXPECT_EQ((*query)->row()[0], Value(3));
}

TEST_P(DriverTest, NotesTheVersionWithTheTransaction) {
    EXPECT_FALSE(*first->isEmpty());
    EXPECT_EQ(*first->schemaVersion(), 0);
    ASSERT_THAT(first->begin(), IsOk());
    ASSERT_THAT(first->setSchemaVersion(7), IsOk());
    EXPECT_EQ(*first->schemaVersion(), 7);
    ASSERT_THAT(first->rollback(), IsOk());
    EXPECT_EQ(*first->schemaVersion(), 0);
    for (const int version : {3, 4}) {
        ASSERT_THAT(first->begin(), IsOk());
        ASSERT_THAT(first->setSchemaVersion(version), IsOk());
        ASSERT_THAT(first->commit(), IsOk());
        EXPECT_EQ(*open()->schemaVersion(), version);
    }
}

TEST_P(DriverTest, RefusesAnotherInterface) {
    const Opened other = openDatabase(GetParam().module, GetParam().target(folder.wide("x")), true,
                                      50, kDriverInterfaceVersion + 1);
    EXPECT_THAT(other.status, Fails(ErrorCode::DriverNotLoaded));
    EXPECT_FALSE(folder.exists("x"));
}

const Driver kDrivers[] = {
    {"sqlite", u"QorSqliteDatabaseu.dll", [](const CStringW& file) { return file; }},
    {"odbc", u"QorOdbcDatabaseu.dll", sourceOf},
};
INSTANTIATE_TEST_SUITE_P(All, DriverTest, testing::ValuesIn(kDrivers),
                         [](const auto& driver) { return driver.param.name; });

}  // namespace
