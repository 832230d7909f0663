// What the collector asks of this module: a connection to a data source.

#include <corvane/base/ModuleExport.h>
#include <corvane/database/IDatabaseDriver.h>

#include "Connection.h"

using namespace qor_db;

CORVANE_MODULE_EXPORT void openQorDatabase(int interfaceVersion, const OpenRequest& request,
                                           std::unique_ptr<IDatabaseConnection>& connection,
                                           Status& status) {
    driver::open(interfaceVersion, connection, status, [&]() -> Outcome<driver::Opened> {
        Outcome<std::shared_ptr<odbc::Session>> session = odbc::Session::connect(request);
        if (!session) return session.status();
        return driver::Opened(std::make_unique<odbc::Connection>(*session));
    });
}
