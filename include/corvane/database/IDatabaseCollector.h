#pragma once

#include <memory>
#include <string_view>

#include <corvane/database/IConnectorData.h>
#include <corvane/database/IQuery.h>
#include <corvane/database/IReferenceData.h>
#include <corvane/database/Status.h>

namespace qor_db {

/// What a collector is connected to.
struct ConnectionInfo {
    IConnectorData::DATABASETYPE type = IConnectorData::DATABASETYPE_SQLITE;  ///< Kind of database.
    CStringW driverModule;                                                    ///< As configured.
    CStringW database;      ///< File or connection string; passwords are shown as "***".
    bool open = false;      ///< The database is open.
    bool readOnly = false;  ///< It can be read and not written.
    int schemaVersion = 0;  ///< Version of the reference tables; 0 when there are none.
};

/// The rule database as rule modules see it. QORDataHelper hands it out; its module owns it.
///
/// A collector is there even when its database could not be opened: status() says why, and every
/// operation gives ErrorCode::NotOpen. Three statuses other than Ok leave the database open, so
/// that queries and transactions work and only the lookups of reference() are refused: NoSchema,
/// NewerVersion, and ReadOnly where the tables would have to be made or upgraded first
/// (ConnectionInfo::open tells). Errors are values, nothing raises. A collector and its queries
/// belong to one thread at a time.
class IDatabaseCollector {
public:
    /// What became of the last attempt to open the database; Ok once installSchema has succeeded.
    virtual const Status& status() const noexcept = 0;
    /// What the collector is connected to now.
    virtual ConnectionInfo connection() const noexcept = 0;

    /// Closes the database and opens it anew, for instance when the server is back. Queries that
    /// were prepared before stay with the old connection.
    virtual Status open() = 0;

    /// How long an operation waits for the lock of another process, at first 2000 ms.
    virtual void setTimeout(int milliseconds) noexcept = 0;

    /// Prepares one statement in the language of the database, with "?" for each parameter.
    virtual Outcome<std::unique_ptr<IQuery>> prepare(std::u16string_view statement) = 0;

    ///@{
    /// Changes between begin and commit happen together or not at all. begin takes the right to
    /// write at once, so that a conflict shows here. Transactions don't nest.
    virtual Status begin() = 0;
    virtual Status commit() = 0;
    virtual Status rollback() = 0;
    ///@}

    /// Makes or upgrades the reference tables. A database file that is new, empty or of this
    /// library gets them by itself when it is opened; a file with tables of a site's own and a
    /// database on a server only by this call. Not inside a transaction.
    virtual Status installSchema() = 0;

    /// The lookups of reference data; lives as long as the collector.
    virtual IReferenceData& reference() noexcept = 0;

protected:
    ~IDatabaseCollector() = default;
};

/// A transaction that is rolled back unless it was committed.
class Transaction {
public:
    /// Begins; status() tells whether that succeeded.
    explicit Transaction(IDatabaseCollector& collector)
        : collector_(collector), status_(collector.begin()), open_(status_.ok()) {}
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        // A fault leaves it to the database, which ends the transaction with the connection.
        if (open_) static_cast<void>(collector_.rollback());
    }

    /// What became of begin.
    const Status& status() const { return status_; }

    /// Ends the transaction. When this fails, the destructor rolls back. A transaction that was not
    /// begun or has ended fails here: what is open then is another one's.
    Status commit() {
        if (!status_.ok()) return status_;
        if (!open_) return {ErrorCode::BadTransaction, u"The transaction has ended.", 0};
        Status result = collector_.commit();
        if (result.ok()) open_ = false;
        return result;
    }

private:
    IDatabaseCollector& collector_;
    Status status_;
    bool open_;
};

/// The export `create` of the collector module: stores a new collector, which stays the module's.
/// The connector is only looked at during the call. The result is 0, or below 0 when nothing could
/// be made.
using CreateCollectorFunction = int (*)(const IConnectorData*, IDatabaseCollector**);
/// The export `destroy` of the collector module: ends the collector and stores null.
using DestroyCollectorFunction = int (*)(IDatabaseCollector**);
///@{
/// The names of the two exports.
inline constexpr const char* kCreateCollectorName = "create";
inline constexpr const char* kDestroyCollectorName = "destroy";
///@}

}  // namespace qor_db
