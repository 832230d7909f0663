#include "Collector.h"

#include <algorithm>

#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/SQLLiteConnectorData.h>

#include "Schema.h"
#include "common/Guard.h"

namespace collector {

using namespace qor_db;
using qor_db::driver::failure;
using qor_db::driver::guarded;

namespace {

constexpr int kDefaultTimeout = 2000;  // milliseconds

// Whether queries can work on a database with this status.
bool leavesOpen(ErrorCode code) {
    return code == ErrorCode::Ok || code == ErrorCode::NoSchema ||
           code == ErrorCode::NewerVersion || code == ErrorCode::ReadOnly;
}

// The kind is in type() and not in run-time type data, which modules need not share.
CStringW targetOf(const IConnectorData& connector) {
    if (connector.type() == IConnectorData::DATABASETYPE_MSSQL)
        return static_cast<const MSSQLConnectorData&>(connector).connectionString();
    return static_cast<const SQLLiteConnectorData&>(connector).databaseFile();
}

CStringW versionText(int version) {
    CStringW text;
    text.Format(u"%d", version);
    return text;
}

}  // namespace

Collector::Collector(const IConnectorData& connector)
    : type_(connector.type()),
      target_(targetOf(connector)),
      timeout_(kDefaultTimeout),
      driver_(connector.modulePath()) {
    if (!isFile()) passwords_ = driver::Passwords(target_);
}

ConnectionInfo Collector::connection() const noexcept {
    ConnectionInfo info;
    info.type = type_;
    info.open = connection_ != nullptr;
    info.readOnly = connection_ && connection_->readOnly();
    info.schemaVersion = schemaVersion_;
    try {
        info.driverModule = driver_.path();
        info.database = isFile() ? target_ : passwords_.description();
    } catch (...) {
        // Without memory for the names the numbers are still true.
        info.database.Empty();
    }
    return info;
}

Status Collector::open() {
    disconnect();
    status_ = guarded([this] { return masked(connect()); });
    if (!leavesOpen(status_.code)) disconnect();
    if (!connection_) reference_.connect(nullptr, guarded([this] { return notOpen(); }));
    return guarded([this] { return status_; });
}

void Collector::disconnect() noexcept {
    reference_.disconnect();
    connection_.reset();
    schemaVersion_ = 0;
}

Status Collector::connect() {
    if (target_.IsEmpty()) {
        return failure(ErrorCode::Missing, isFile() ? u"No database file is configured."
                                                    : u"No connection string is configured.");
    }
    OpenRequest request;
    request.target = target_;
    request.mayCreate = isFile();
    request.timeoutMilliseconds = timeout_;
    Status opened = driver_.open(request, connection_);
    if (!opened.ok()) return opened;
    return settleSchema(false);
}

// Looks at the version of the tables and brings them up to date where that is permitted. Lookups
// get the status as their own, but stay as they are after a fault that may pass, as a lock does.
Status Collector::settleSchema(bool install) {
    const Outcome<int> version = connection_->schemaVersion();
    if (!version.ok()) return version.status();
    Status status = upgradeFrom(*version, install);
    const Outcome<int> reached = connection_->schemaVersion();
    schemaVersion_ = reached.ok() ? *reached : 0;
    if (leavesOpen(status.code))
        reference_.connect(status.ok() ? connection_.get() : nullptr, status);
    return status;
}

Status Collector::upgradeFrom(int version, bool install) {
    if (version == kSchemaVersion) return {};
    if (version > kSchemaVersion) {
        return failure(ErrorCode::NewerVersion, u"The reference tables have version " +
                                                    versionText(version) +
                                                    u"; this release knows them up to version " +
                                                    versionText(kSchemaVersion) + u".");
    }
    if (!install) {
        const Outcome<bool> own = isOwnFile(version);
        if (!own.ok()) return own.status();
        if (!*own) {
            return failure(
                ErrorCode::NoSchema,
                version == 0 ? u"The database holds no reference tables; installSchema makes them."
                             : u"The reference tables are of an older version; installSchema "
                               u"upgrades them.");
        }
    }
    if (connection_->readOnly()) {
        return failure(ErrorCode::ReadOnly,
                       u"The reference tables cannot be made or upgraded: the database is "
                       u"read-only.");
    }
    return upgradeSchema(*connection_);
}

// True for a file whose tables come and go with this library: one that has them, or has nothing.
Outcome<bool> Collector::isOwnFile(int version) {
    if (!isFile() || version != 0) return isFile();
    Outcome<bool> empty = connection_->isEmpty();
    if (!empty.ok() || *empty) return empty;
    // Another process may have begun to make the tables since the version was read.
    const Outcome<int> now = connection_->schemaVersion();
    if (!now.ok()) return now.status();
    return *now != 0;
}

void Collector::setTimeout(int milliseconds) noexcept {
    timeout_ = std::max(milliseconds, 0);
    if (connection_) connection_->setTimeout(timeout_);
}

Status Collector::notOpen() const {
    return failure(ErrorCode::NotOpen, u"The database is not open: " + status_.message);
}

Status Collector::masked(Status status) const {
    status.message = passwords_.mask(status.message);
    return status;
}

template <typename Work>
Status Collector::onConnection(Work&& work) {
    return guarded([&] { return connection_ ? masked(work(*connection_)) : notOpen(); });
}

Outcome<std::unique_ptr<IQuery>> Collector::prepare(std::u16string_view statement) {
    return guarded([&]() -> Outcome<std::unique_ptr<IQuery>> {
        if (!connection_) return notOpen();
        Outcome<std::unique_ptr<IQuery>> query = connection_->prepare(statement);
        if (!query.ok()) return masked(query.status());
        return query;
    });
}

Status Collector::begin() {
    return onConnection([](IDatabaseConnection& database) { return database.begin(); });
}

Status Collector::commit() {
    return onConnection([](IDatabaseConnection& database) { return database.commit(); });
}

Status Collector::rollback() {
    return onConnection([](IDatabaseConnection& database) { return database.rollback(); });
}

Status Collector::installSchema() {
    return onConnection([this](IDatabaseConnection&) {
        Status status = settleSchema(true);
        if (status.ok()) status_ = status;
        return status;
    });
}

}  // namespace collector
