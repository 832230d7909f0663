// A driver module that opens nothing: it tells what it was asked, as a server's driver may, or
// breaks its promises.

#include <pthread.h>

#include <corvane/base/ModuleExport.h>
#include <corvane/database/IDatabaseDriver.h>

CORVANE_MODULE_EXPORT void openQorDatabase(int interfaceVersion, const qor_db::OpenRequest& request,
                                           std::unique_ptr<qor_db::IDatabaseConnection>&,
                                           qor_db::Status& status) {
    status.nativeCode = interfaceVersion;
    if (request.target == u"nothing") return;
    if (request.target == u"throws") throw 7;
    if (request.target == u"cancels") {
        ::pthread_cancel(::pthread_self());
        ::pthread_testcancel();
    }
    status.code = qor_db::ErrorCode::Unreachable;
    status.message = u"login failed for [" + request.target + u"]";
}
