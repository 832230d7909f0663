// A driver module that opens nothing: it tells what it was asked, as a server's driver may.

#include <corvane/base/ModuleExport.h>
#include <corvane/database/IDatabaseDriver.h>

CORVANE_MODULE_EXPORT void openQorDatabase(int interfaceVersion, const qor_db::OpenRequest& request,
                                           std::unique_ptr<qor_db::IDatabaseConnection>&,
                                           qor_db::Status& status) noexcept {
    status.nativeCode = interfaceVersion;
    if (request.target == u"nothing") return;  // breaks its promise
    status.code = qor_db::ErrorCode::Unreachable;
    status.message = u"login failed for [" + request.target + u"]";
}
