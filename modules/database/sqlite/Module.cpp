// What the collector asks of this module: a connection to a database file.

#include <corvane/base/ModuleExport.h>
#include <corvane/database/IDatabaseDriver.h>

#include "Connection.h"
#include "Open.h"

using namespace qor_db;

CORVANE_MODULE_EXPORT void openQorDatabase(int interfaceVersion, const OpenRequest& request,
                                           std::unique_ptr<IDatabaseConnection>& connection,
                                           Status& status) {
    driver::open(interfaceVersion, connection, status, [&]() -> Outcome<driver::Opened> {
        Outcome<std::shared_ptr<sqlite::Database>> database = sqlite::openDatabase(request);
        if (!database) return database.status();
        return driver::Opened(std::make_unique<sqlite::Connection>(*database));
    });
}
