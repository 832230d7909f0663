#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <ostream>
#include <string>

#include <corvane/database/IDatabaseDriver.h>
#include <corvane/platform/LoadedModule.h>

#include "support/TemporaryFolder.h"
#include "support/Text.h"

namespace qor_db {

inline void PrintTo(const Status& status, std::ostream* out) {
    *out << static_cast<int>(status.code) << " (" << status.nativeCode << ") "
         << status.message.ToUtf8();
}
}  // namespace qor_db

using namespace qor_db;

MATCHER(IsOk, "") {
    return arg.ok();
}
MATCHER_P(Fails, code, "") {
    return arg.code == code && !arg.message.IsEmpty();
}

/// What an attempt to open gave.
struct Opened {
    std::unique_ptr<IDatabaseConnection> connection;
    Status status;

    auto* operator->() const { return connection.get(); }
    auto& operator*() const { return *connection; }
};

/// Opens by a driver module as the collector does.
inline Opened openDatabase(const char16_t* module, CStringW target, bool mayCreate = true,
                           int timeout = 50, int version = kDriverInterfaceVersion,
                           int statementLimit = 60000) {
    // Queries may outlive everything but their module.
    static auto& modules = *new std::map<std::u16string, corvane::LoadedModule>;
    const auto open = modules.try_emplace(module, std::u16string_view(module))
                          .first->second.function<OpenDatabaseFunction>(kOpenDatabaseName);
    Opened opened;
    open(version, {target, mayCreate, timeout, statementLimit}, opened.connection, opened.status);
    EXPECT_EQ(opened.status.ok(), opened.connection != nullptr);
    return opened;
}

/// The connection string of a database file behind the driver manager.
inline CStringW sourceOf(const CStringW& file) {
    return u"Driver=" + CStringW::FromUtf8(SQLITE_ODBC_DRIVER) + u";Timeout=50;Database=" + file;
}

/// Runs one statement, on a connection or by a collector.
template <typename Connection>
Status run(Connection& connection, std::u16string_view statement,
           const std::vector<Value>& parameters = {}) {
    const auto query = connection.prepare(statement);
    return query ? (*query)->execute(parameters) : query.status();
}

/// The first value of the first row; null without a row.
template <typename Connection>
Value valueOf(Connection& connection, std::u16string_view statement) {
    const auto query = connection.prepare(statement);
    if (!query || !(*query)->execute({}).ok() || !(*query)->next()) return {};
    return (*query)->row()[0];
}
