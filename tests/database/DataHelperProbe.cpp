// A process that asks for the collector, and connects anew for each argument.

#include <cstdio>

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>

int main(int count, char** arguments) {
    qor_db::QORDataHelper& helper = qor_db::QORDataHelper::getInstance();
    for (int i = 1; i < count; ++i) {
        helper.ConnectSQLite(CStringW::FromUtf8(arguments[i]));
        helper.ConnectMSSQL(CStringW::FromUtf8(arguments[i]));
    }
    qor_db::IDatabaseCollector* collector = helper;
    std::puts(collector ? "collector" : "none");
    return &helper == &qor_db::QORDataHelper::getInstance() ? 0 : 1;
}
