// A collector module that notes its calls in the file that RECORD names. Its collectors are
// numbers.

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include <corvane/base/ModuleExport.h>
#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/SQLLiteConnectorData.h>

// A class that no other module knows, so the module must outlive what it throws.
struct OwnException : std::runtime_error {
    OwnException() : std::runtime_error("no collector") {}
    ~OwnException() override { std::ofstream(std::getenv("RECORD"), std::ios::app) << "caught\n"; }
};

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
    const char* failure = std::getenv("CREATE_FAILS");
    if (failure && std::string_view(failure) == "throws") throw OwnException();
    if (failure) return -1;
    *result = ++made;
    return 0;
}

CORVANE_MODULE_EXPORT int destroy(const std::intptr_t* collector) {
    CStringW text;
    text.Format(u"destroy %d", static_cast<int>(*collector));
    note(text);
    return 0;
}
