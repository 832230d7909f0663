#pragma once

#include <memory>

#include <corvane/database/IDatabaseDriver.h>

namespace collector {

/// The driver module of a connection, loaded at the first use and kept until the process ends:
/// queries run its code, and a query may outlive everything else.
class Driver {
public:
    explicit Driver(CStringW modulePath) : path_(std::move(modulePath)) {}

    const CStringW& path() const { return path_; }

    /// Opens a connection. On failure `connection` is null.
    qor_db::Status open(const qor_db::OpenRequest& request,
                        std::unique_ptr<qor_db::IDatabaseConnection>& connection);

private:
    qor_db::Status load();

    CStringW path_;
    qor_db::OpenDatabaseFunction open_ = nullptr;
};

}  // namespace collector
