#pragma once

#include <memory>
#include <utility>

#include <corvane/database/IDatabaseDriver.h>

#include "common/Guard.h"

namespace qor_db::driver {

using Opened = std::unique_ptr<IDatabaseConnection>;

/// The body of a driver's export: `operation` gives an Outcome<Opened>.
template <typename Operation>
void open(int interfaceVersion, Opened& connection, Status& status, const Operation& operation) {
    connection.reset();
    Outcome<Opened> opened = guarded([&]() -> Outcome<Opened> {
        if (interfaceVersion != kDriverInterfaceVersion)
            return failure(ErrorCode::DriverNotLoaded,
                           u"The driver module belongs to another release.");
        return operation();
    });
    if (opened) connection = std::move(*opened);
    status = guarded([&] { return opened.status(); });
}

/// What the connections of all drivers share: the order of a transaction's operations.
class DriverConnection : public IDatabaseConnection {
public:
    Status begin() final {
        return guarded([this] {
            if (inTransaction())
                return failure(ErrorCode::BadTransaction, u"A transaction is open already.");
            if (readOnly()) return failure(ErrorCode::ReadOnly, u"The database may only be read.");
            return beginTransaction();
        });
    }
    Status commit() final {
        return guarded([this] { return inTransaction() ? commitTransaction() : noTransaction(); });
    }
    Status rollback() final {
        return guarded(
            [this] { return inTransaction() ? rollbackTransaction() : noTransaction(); });
    }

protected:
    virtual bool inTransaction() const noexcept = 0;
    virtual Status beginTransaction() = 0;
    /// When this fails, the transaction stays open.
    virtual Status commitTransaction() = 0;
    virtual Status rollbackTransaction() = 0;

private:
    static Status noTransaction() {
        return failure(ErrorCode::BadTransaction, u"No transaction is open.");
    }
};

}  // namespace qor_db::driver
