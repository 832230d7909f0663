#pragma once

#include <functional>
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
inline void PrintTo(const Value& value, std::ostream* out) {
    if (value.text()) *out << '"' << value.text()->ToUtf8().substr(0, 80) << '"';
    if (value.number()) *out << *value.number();
    if (value.bytes()) *out << value.bytes()->size() << " bytes";
    if (value.isNull()) *out << "null";
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

    IDatabaseConnection* operator->() const { return connection.get(); }
    IDatabaseConnection& operator*() const { return *connection; }
};

/// Opens by a driver module as the collector does.
inline Opened openDatabase(const char16_t* module, CStringW target, bool mayCreate = true,
                           int timeout = 50, int version = kDriverInterfaceVersion) {
    // Queries may outlive everything but their module.
    static const auto& modules = *new std::function([](std::u16string_view name) {
        static auto& loaded = *new std::map<std::u16string, corvane::LoadedModule, std::less<>>;
        return &loaded.try_emplace(std::u16string(name), name).first->second;
    });
    Opened opened;
    const auto open = modules(module)->function<OpenDatabaseFunction>(kOpenDatabaseName);
    if (open) {
        open(version, {target, mayCreate, timeout}, opened.connection, opened.status);
    } else {
        opened.status = {ErrorCode::DriverNotLoaded, u"no export", 0};
    }
    EXPECT_EQ(opened.status.ok(), opened.connection != nullptr);
    return opened;
}

/// The connection string of a database file behind the driver manager.
inline CStringW sourceOf(const CStringW& file) {
    return u"Driver=" + CStringW::FromUtf8(SQLITE_ODBC_DRIVER) + u";Timeout=50;Database=" + file;
}

/// Runs one statement.
inline Status run(IDatabaseConnection& connection, std::u16string_view statement,
                  const std::vector<Value>& parameters = {}) {
    const auto query = connection.prepare(statement);
    return query ? (*query)->execute(parameters) : query.status();
}

/// The first value of the first row; null without a row.
inline Value valueOf(IDatabaseConnection& connection, std::u16string_view statement) {
    const auto query = connection.prepare(statement);
    if (!query || !(*query)->execute({}).ok() || !(*query)->next()) return {};
    return (*query)->row()[0];
}
