#pragma once

#include <memory>

#include <corvane/database/IDatabaseDriver.h>

#include "ErrorCodes.h"
#include "common/Passwords.h"

namespace qor_db::odbc {

/// A connection to a data source. The connection object and its queries share it, so that the last
/// one to go disconnects.
class Session {
public:
    static Outcome<std::shared_ptr<Session>> connect(const OpenRequest& request);

    Session(const OpenRequest& request);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    SQLHANDLE handle() const { return connection_.get(); }
    bool readOnly() const { return readOnly_; }

    /// The status of a call that has just failed. A fault that ends the transaction is noted.
    Status fault(SQLSMALLINT type, SQLHANDLE handle, Phase phase);
    Status fault(const StatementHandle& statement, Phase phase) {
        return fault(SQL_HANDLE_STMT, statement.get(), phase);
    }
    Status fault(Phase phase) { return fault(SQL_HANDLE_DBC, handle(), phase); }

    void setTimeout(int milliseconds);
    /// Limits the time that the statement takes: by the time-out, or only in the long run where the
    /// product itself ends the wait for a lock.
    void limit(const StatementHandle& statement) const;

    Status begin();
    Status commit();
    Status rollback();
    bool inTransaction() const { return inTransaction_; }
    /// A fault when the server has ended the transaction: what follows would not be part of it.
    Status brokenTransaction() const;

private:
    Status open(const OpenRequest& request);
    void learn();
    CStringW info(SQLUSMALLINT which) const;
    Status end(SQLSMALLINT how);

    Handle<SQL_HANDLE_ENV> environment_;
    Handle<SQL_HANDLE_DBC> connection_;
    driver::Passwords passwords_;
    const Product* product_;
    int timeout_;
    int statementLimit_;
    bool connected_ = false;
    bool readOnly_ = false;
    bool inTransaction_ = false;
    bool broken_ = false;
};

}  // namespace qor_db::odbc
