#include "Driver.h"

#include <utility>

#include "common/Guard.h"

namespace collector {

using qor_db::ErrorCode;
using qor_db::Status;
using qor_db::driver::failure;

std::vector<corvane::LoadedModule>& loadedDrivers() {
    static std::vector<corvane::LoadedModule> modules;
    return modules;
}

Status Driver::load() {
    if (open_) return {};
    if (path_.IsEmpty()) {
        return failure(ErrorCode::DriverNotLoaded,
                       u"No driver module is configured: the key module1 of section "
                       u"RULE_DATABASE_MODULES in ConfigModule.ini is missing.");
    }
    corvane::LoadedModule module(path_);
    if (!module && module.fault().empty())
        return failure(ErrorCode::DriverNotLoaded, u"There is no driver module " + path_ + u".");
    if (!module) {
        return failure(
            ErrorCode::DriverNotLoaded,
            u"The driver module " + path_ + u" cannot be loaded: " + CStringW(module.fault()));
    }
    const auto open = module.function<qor_db::OpenDatabaseFunction>(qor_db::kOpenDatabaseName);
    if (!open) {
        return failure(ErrorCode::DriverNotLoaded,
                       path_ + u" is no driver module: it does not export " +
                           CStringW(qor_db::kOpenDatabaseName) + u".");
    }
    loadedDrivers().push_back(std::move(module));
    open_ = open;
    return {};
}

Status Driver::open(const qor_db::OpenRequest& request,
                    std::unique_ptr<qor_db::IDatabaseConnection>& connection) {
    Status status = load();
    if (!status.ok()) return status;
    open_(qor_db::kDriverInterfaceVersion, request, connection, status);
    if (!status.ok()) {
        connection.reset();
    } else if (!connection) {
        status = failure(ErrorCode::Failed, u"The driver module " + path_ +
                                                u" opened no connection and gave no reason.");
    }
    return status;
}

}  // namespace collector
