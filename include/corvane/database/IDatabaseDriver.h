#pragma once

#include <memory>
#include <string_view>

#include <corvane/base/Types.h>
#include <corvane/database/IQuery.h>
#include <corvane/database/Status.h>
#include <corvane/text/CStringW.h>

namespace qor_db {

/// One connection of a driver module. The collector is its only caller and owner; what the
/// collector promises about errors, threads and queries, the driver keeps.
///
/// A query shares what it needs of its connection and may outlive it, though not its module. The
/// end of a connection rolls an open transaction back.
class IDatabaseConnection {
public:
    virtual ~IDatabaseConnection() = default;

    /// Refuses with ErrorCode::BadQuery what is no single statement, what begins or ends a
    /// transaction or a savepoint, and on a file what opens another one (ATTACH, VACUUM INTO).
    virtual Outcome<std::unique_ptr<IQuery>> prepare(std::u16string_view statement) = 0;
    ///@{
    /// As the operation of IDatabaseCollector of that name; readOnly tells whether the database can
    /// only be read.
    virtual Status begin() = 0;
    virtual Status commit() = 0;
    virtual Status rollback() = 0;
    virtual void setTimeout(int milliseconds) noexcept = 0;
    virtual bool readOnly() const noexcept = 0;
    ///@}

    /// The version of the reference tables: 0 for a database that holds nothing of this library,
    /// such as another program's file with a version of its own. Inside a transaction it is the
    /// version that the transaction sees.
    virtual Outcome<int> schemaVersion() = 0;
    /// Notes the version, as part of the transaction that is open.
    virtual Status setSchemaVersion(int version) = 0;
    /// True when there is no table at all, so that the reference tables cannot be in anybody's way.
    virtual Outcome<bool> isEmpty() = 0;
};

/// What the collector asks a driver to open.
struct OpenRequest {
    CStringW target;              ///< Database file or connection string.
    bool mayCreate = false;       ///< Make a missing file, and its folder.
    int timeoutMilliseconds = 0;  ///< How long to wait for a lock.
    /// How long one call may work on a statement, the wait for a lock not counted: a slip in a
    /// query, or a view of a file that never ends, must not hang the process.
    int statementMilliseconds = 60000;
};

/// The export of a driver module: opens a connection. The version is that of this header; a driver
/// that was built for another one refuses with ErrorCode::DriverNotLoaded. `connection` is null
/// exactly when `status` is an error.
using OpenDatabaseFunction = void (*)(int interfaceVersion, const OpenRequest& request,
                                      std::unique_ptr<IDatabaseConnection>& connection,
                                      Status& status);
/// The name of that export.
inline constexpr const char* kOpenDatabaseName = "openQorDatabase";
/// The version of this header.
inline constexpr int kDriverInterfaceVersion = 1;

}  // namespace qor_db
