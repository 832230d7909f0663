#pragma once

#include <memory>

#include <corvane/database/IDatabaseDriver.h>
#include <corvane/platform/LoadedModule.h>

namespace collector {

/// The driver module of a connection, loaded at the first use and kept from then on: queries run
/// its code as long as they live.
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
    corvane::LoadedModule module_;
    qor_db::OpenDatabaseFunction open_ = nullptr;
};

}  // namespace collector
