// What the driver for servers makes of what the driver manager, drivers and servers say.

#include <odbc/ErrorCodes.h>
#include <odbc/Secrets.h>

#include "DriverTest.h"

namespace {

constexpr const char16_t* kModule = u"QorOdbcDatabaseu.dll";

TEST(OdbcTest, TellsWhyAServerIsOutOfReach) {
    const TemporaryFolder folder;
    const std::pair<CStringW, ErrorCode> kCases[] = {
        {u"", ErrorCode::DriverNotLoaded},
        {u"DSN=CorvaneHasNoSuchSource;PWD=hush", ErrorCode::DriverNotLoaded},
        {u"Server=x;PWD=hush", ErrorCode::DriverNotLoaded},
        {u"Driver=/nowhere/driver.so;Server=x;PWD=hush", ErrorCode::DriverNotLoaded},
        {u"Driver=" + folder.wide() + u"/hush;PWD=hush", ErrorCode::DriverNotLoaded},
        {sourceOf(folder.wide("none/x.dat")), ErrorCode::Unreachable},
        {CStringW(u"Driver=x\0PWD=hush", 17), ErrorCode::Unreachable},
        {sourceOf(CStringW(u'x', 40000)), ErrorCode::Unreachable},
    };
    for (const auto& [target, code] : kCases) {
        const Status status = openDatabase(kModule, target).status;
        EXPECT_THAT(status, Fails(code)) << target.ToUtf8().substr(0, 80);
        EXPECT_EQ(status.message.Find(u"hush"), -1) << status.message.ToUtf8();
    }
}

TEST(OdbcTest, HidesPasswords) {
    const std::pair<const char16_t*, const char16_t*> kCases[] = {
        {u"UID=sa;PWD=hush", u"sa ***"},
        {u" pwd = hush ;UID=sa", u"sa ***"},
        {u"Database=a=b;Password={hush};", u"sa ***"},
        {u"Server={a;PWD=sa};PWD=hush", u"sa ***"},
        {u"PWD={hu;sh", u"sa hush"},
        {u"PWD=;UID=hush", u"sa hush"},
    };
    for (const auto& [connection, shown] : kCases)
        EXPECT_EQ(odbc::Secrets(connection).hide(u"sa hush"), shown)
            << CStringW(connection).ToUtf8();
    const odbc::Secrets braces(u"PWD={a}};b};UID=x");
    EXPECT_EQ(braces.hide(u"'a};b' {a}};b}"), u"'***' ***");
}

TEST(OdbcTest, TranslatesStates) {
    using odbc::Phase;
    struct Case {
        const char16_t* product;
        Phase phase;
        const char16_t* state;
        int nativeCode;
        ErrorCode code;
    };
    const Case kCases[] = {
        {u"", Phase::Connect, u"08001", 0, ErrorCode::Unreachable},
        {u"", Phase::Connect, u"28000", 18456, ErrorCode::Unreachable},
        {u"", Phase::Connect, u"42000", 4060, ErrorCode::Unreachable},
        {u"", Phase::Connect, u"HYT00", 0, ErrorCode::Unreachable},
        {u"", Phase::Connect, u"IM003", 0, ErrorCode::DriverNotLoaded},
        {u"", Phase::Execute, u"08S01", 0, ErrorCode::Unreachable},
        {u"", Phase::Execute, u"HYT00", 0, ErrorCode::Locked},
        {u"", Phase::Execute, u"HYT01", 0, ErrorCode::Unreachable},
        {u"", Phase::Execute, u"40001", 0, ErrorCode::Locked},
        {u"", Phase::Execute, u"42S02", 0, ErrorCode::BadQuery},
        {u"", Phase::Execute, u"23000", 0, ErrorCode::Constraint},
        {u"", Phase::Execute, u"22003", 0, ErrorCode::BadParameter},
        {u"", Phase::Execute, u"25006", 0, ErrorCode::ReadOnly},
        {u"", Phase::Execute, u"HY000", 1205, ErrorCode::Failed},
        {u"", Phase::Prepare, u"HY000", 0, ErrorCode::BadQuery},
        {u"Microsoft SQL Server", Phase::Execute, u"42000", 1222, ErrorCode::Locked},
        {u"Microsoft SQL Server", Phase::Execute, u"42000", 229, ErrorCode::ReadOnly},
        {u"Microsoft SQL Server", Phase::Execute, u"42000", 102, ErrorCode::BadQuery},
        {u"SQLite", Phase::Execute, u"HY000", 13, ErrorCode::StorageFull},
    };
    for (const Case& given : kCases) {
        EXPECT_EQ(odbc::codeOf({given.state, given.nativeCode, u""},
                               odbc::Product::named(given.product), given.phase),
                  given.code)
            << CStringW(given.state).ToUtf8() << ' ' << given.nativeCode;
    }
}

TEST(OdbcTest, PassesWarningsOverForTheCause) {
    const std::vector<odbc::Diagnostic> records = {
        {u"01000", 1, u"warning"}, {u"23000", 2, u"cause"}, {u"42000", 3, u"more"}};
    EXPECT_EQ(odbc::essential(records), &records[1]);
    EXPECT_EQ(odbc::essential({}), nullptr);
}

TEST(OdbcTest, RefusesInfiniteNumbers) {
    const TemporaryFolder folder;
    const Opened opened = openDatabase(kModule, sourceOf(folder.wide("x.dat")));
    ASSERT_THAT(run(*opened, u"CREATE TABLE kept (real DOUBLE)"), IsOk());
    EXPECT_THAT(
        run(*opened, u"INSERT INTO kept VALUES (?)", {std::numeric_limits<double>::infinity()}),
        Fails(ErrorCode::BadParameter));
}

}  // namespace
