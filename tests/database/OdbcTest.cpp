// What the driver for servers makes of what the driver manager, drivers and servers say.

#include <common/Passwords.h>
#include <odbc/ErrorCodes.h>

#include "DriverTest.h"

namespace {

constexpr const char16_t* kModule = u"QorOdbcDatabaseu.dll";

TEST(OdbcTest, TellsWhyAServerIsOutOfReach) {
    const TemporaryFolder folder;
    using enum ErrorCode;
    const std::pair<CStringW, ErrorCode> kCases[] = {
        {u"", DriverNotLoaded},
        {u"DSN=CorvaneHasNoSuchSource;PWD=hush", DriverNotLoaded},
        {u"Server=x;PWD=hush", DriverNotLoaded},
        {u"Driver=/nowhere/driver.so;Server=x;PWD=hush", DriverNotLoaded},
        {u"Driver=" + folder.wide() + u"/hush;PWD=hush", DriverNotLoaded},
        {sourceOf(folder.wide("none/x.dat")), Unreachable},
        {CStringW(u"Driver=x\0PWD=hush", 17), Unreachable},
        {sourceOf(CStringW(u'x', 40000)), Unreachable}};
    for (const auto& [target, code] : kCases) {
        const Status status = openDatabase(kModule, target).status;
        EXPECT_THAT(status, Fails(code)) << target.ToUtf8().substr(0, 80);
        EXPECT_EQ(status.message.Find(u"hush"), -1) << status.message.ToUtf8();
    }
}

TEST(OdbcTest, HidesPasswords) {
    const std::tuple<const char16_t*, const char16_t*, const char16_t*> kCases[] = {
        {u"UID=sa;PWD=hush", u"sa hushhush", u"sa ******"},
        {u" pwd = hush ;UID=sa", u"[hush]", u"[***]"},
        {u"Database=a=b;Password={hush};", u"sa hush", u"sa ***"},
        {u"Server={a;PWD=sa};PWD=hush", u"sa hush", u"sa ***"},
        {u"Server='a;PWD=hush", u"sa hush", u"sa ***"},
        {u"Server={a;PWD={b}};PWD=hush", u"sa hush", u"sa ***"},
        {u"PWD={hu;sh", u"sa hush hu;sh", u"sa hush ***"},
        {u"PWD=;UID=hush", u"sa hush", u"sa hush"},
        {u"PWD={a}};b};UID=x", u"'a};b' {a}};b}", u"'***' ***"},
        {u"PWD={abcd}}};UID=x", u"abcd} abcd", u"*** abcd"},
        {u"Password = 'hush';", u"hush 'hush'", u"*** ***"},
        {u"PWD=a", u"a bad name a1 (a)", u"*** bad name a1 (***)"},
        {u"PWD=*;PWD=**", u"* ** *", u"*** *** ***"},
        {u"Server=hush.net;PWD=hush", u"no hush.net", u"no ***.net"}};
    for (const auto& [connection, message, shown] : kCases)
        EXPECT_EQ(driver::Passwords(connection).mask(message), shown)
            << CStringW(connection).ToUtf8();
}

TEST(OdbcTest, TranslatesStates) {
    using enum odbc::Phase;
    using enum ErrorCode;
    struct Case {
        const char16_t* state;
        int nativeCode;
        ErrorCode code;
        odbc::Phase phase = Execute;
        const char16_t* product = u"";
    };
    const char16_t* const kServer = u"Microsoft SQL Server";
    const Case kCases[] = {{u"08001", 0, Unreachable, Connect},
                           {u"28000", 18456, Unreachable, Connect},
                           {u"HYT00", 0, Unreachable, Connect},
                           {u"42000", 4060, Unreachable, Connect},
                           {u"08S01", 0, Unreachable},
                           {u"IM003", 0, DriverNotLoaded, Connect},
                           {u"HYT00", 0, Locked},
                           {u"HYT01", 0, Unreachable},
                           {u"40001", 0, Locked},
                           {u"42S02", 0, BadQuery},
                           {u"23000", 0, Constraint},
                           {u"22003", 0, BadParameter},
                           {u"25006", 0, ReadOnly},
                           {u"HY000", 1205, Failed},
                           {u"HY000", 0, BadQuery, Prepare},
                           {u"42000", 1222, Locked, Execute, kServer},
                           {u"HYT00", 0, TimedOut, Execute, kServer},
                           {u"42000", 229, ReadOnly, Execute, kServer},
                           {u"42000", 102, BadQuery, Execute, kServer},
                           {u"HY000", 13, StorageFull, Execute, u"SQLite"}};
    for (const auto& [state, number, code, phase, product] : kCases)
        EXPECT_EQ(odbc::codeOf({state, number, u""}, odbc::Product::named(product), phase), code)
            << CStringW(state).ToUtf8() << ' ' << number;
    for (const auto& [number, ends] : {std::pair(3609, true), {1205, true}, {1222, false}})
        EXPECT_EQ(odbc::endsTransaction({u"42000", number, u""}, odbc::Product::named(kServer)),
                  ends);
    const std::vector<odbc::Diagnostic> records = {{u"01000", 1, u""}, {u"23000", 2, u""}};
    EXPECT_EQ(odbc::essential(records), &records[1]);
}

}  // namespace
