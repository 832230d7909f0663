// A collector module that notes its calls in the file that RECORD names. Its collectors are
// numbers.

#include <cstdlib>
#include <fstream>

#include <corvane/base/ModuleExport.h>
#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/SQLLiteConnectorData.h>

static void note(const CStringW& text) {
    std::ofstream(std::getenv("RECORD"), std::ios::app) << text.ToUtf8() << '\n';
}

CORVANE_MODULE_EXPORT int create(const qor_db::IConnectorData* connector, std::intptr_t* result) {
    static int made = 0;
    const CStringW module = connector->modulePath();
    if (connector->type() == qor_db::IConnectorData::DATABASETYPE_MSSQL) {
        note(u"mssql " + module + u" | " +
             static_cast<const MSSQLConnectorData*>(connector)->connectionString());
    } else {
        note(u"sqlite " + module + u" | " +
             static_cast<const SQLLiteConnectorData*>(connector)->databaseFile());
    }
    if (std::getenv("CREATE_FAILS")) return -1;
    *result = ++made;
    return 0;
}

CORVANE_MODULE_EXPORT int destroy(const std::intptr_t* collector) {
    CStringW text;
    text.Format(u"destroy %d", static_cast<int>(*collector));
    note(text);
    return 0;
}
