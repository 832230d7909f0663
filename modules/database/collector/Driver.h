#pragma once

#include <memory>
#include <vector>

#include <corvane/database/IDatabaseDriver.h>
#include <corvane/platform/LoadedModule.h>

namespace collector {

/// The drivers that are loaded. They go with this module and not with their collector, because
/// queries run their code and may outlive it.
std::vector<corvane::LoadedModule>& loadedDrivers();

/// The driver module of a connection, loaded at the first use and kept as long as this
/// module: queries run its code, and a query may outlive its collector.
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
