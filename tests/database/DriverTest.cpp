// What every driver does alike.

#include "DriverTest.h"

#include <limits>

namespace {

struct Driver {
    const char* name;
    const char16_t* module;
    std::u16string (*target)(const CStringW& file);

    friend void PrintTo(const Driver& driver, std::ostream* out) { *out << driver.name; }
};

class DriverTest : public testing::TestWithParam<Driver> {
protected:
    Opened open(const char* file = "rules.dat") {
        return openDatabase(GetParam().module, GetParam().target(folder.wide(file)));
    }
    void SetUp() override {
        ASSERT_THAT(first.status, IsOk());
        ASSERT_THAT(run(*first,
                        u"CREATE TABLE kept (whole BIGINT UNIQUE, real DOUBLE, "
                        u"words TEXT, raw BLOB)"),
                    IsOk());
    }

    const TemporaryFolder folder;
    const Opened first = open();
};

CStringW repeated(std::u16string_view text, int times) {
    CStringW result;
    while (times-- > 0)
        result.Append(text);
    return result;
}

TEST_P(DriverTest, KeepsTypedValues) {
    using Whole = std::numeric_limits<std::int64_t>;
    using Real = std::numeric_limits<double>;
    const Bytes bytes{std::byte{0}, std::byte{0xFF}, std::byte{0}};
    const std::vector<std::pair<const char16_t*, std::vector<Value>>> kColumns = {
        {u"whole", {{}, 0, -1, Whole::max(), Whole::min()}},
        {u"real", {{}, 0.1, -1e-3, Real::max(), Real::denorm_min(), -Real::min()}},
        {u"words",
         {{}, u"", u"M8x1 \u00F8 \u4E2D \xD83D\xDD29", u"'\"?;--", repeated(u"f\u00FC", 90000)}},
        {u"raw", {{}, bytes, Bytes(300000, std::byte{7})}},
    };
    for (const auto& [column, values] : kColumns) {
        const CStringW name = column;
        const auto insert = first->prepare(u"INSERT INTO kept (" + name + u") VALUES (?)");
        const auto select = first->prepare(u"SELECT " + name + u" FROM kept");
        ASSERT_THAT(insert.status(), IsOk());
        ASSERT_THAT(select.status(), IsOk());
        for (const Value& value : values) {
            ASSERT_THAT(run(*first, u"DELETE FROM kept"), IsOk());
            ASSERT_THAT((*insert)->execute({value}), IsOk());
            EXPECT_EQ((*insert)->changedRows(), 1);
            ASSERT_THAT((*select)->execute({}), IsOk());
            ASSERT_TRUE((*select)->next()) << name.ToUtf8();
            EXPECT_EQ((*select)->row()[0], value) << name.ToUtf8();
            EXPECT_FALSE((*select)->next());
        }
    }
}

TEST_P(DriverTest, TakesTurnsAtTransactions) {
    const Opened second = open();
    EXPECT_THAT(first->commit(), Fails(ErrorCode::BadTransaction));
    ASSERT_THAT(first->begin(), IsOk());
    EXPECT_THAT(first->begin(), Fails(ErrorCode::BadTransaction));
    ASSERT_THAT(run(*first, u"INSERT INTO kept (whole) VALUES (1)"), IsOk());
    ASSERT_THAT(first->rollback(), IsOk());
    EXPECT_THAT(first->rollback(), Fails(ErrorCode::BadTransaction));
    EXPECT_EQ(valueOf(*first, u"SELECT count(*) FROM kept"), Value(0));
}

const Driver kDrivers[] = {
    {"sqlite", u"QorSqliteDatabaseu.dll", [](const CStringW& file) { return file.Std(); }},
};
INSTANTIATE_TEST_SUITE_P(All, DriverTest, testing::ValuesIn(kDrivers),
                         [](const auto& driver) { return driver.param.name; });

}  // namespace
