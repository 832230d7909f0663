#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>
#include <corvane/platform/LoadedModule.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"

using qor_db::ConfiguredDatabase;
using qor_db::ErrorCode;
using qor_db::IConnectorData;

namespace {

const char16_t* remedyOf(ErrorCode code) {
    switch (code) {
        case ErrorCode::DriverNotLoaded:
            return u"let module1 name a driver module, and install what that needs";
        case ErrorCode::CannotOpen:
        case ErrorCode::Missing:
            return u"correct FileName in ConfigModule.ini, or let the user read and write the file";
        case ErrorCode::Unreachable:
            return u"correct ConnectionString in ConfigModule.ini, or start the server";
        case ErrorCode::Damaged:
            return u"put a backup in its place, or delete the file: a new one is made";
        case ErrorCode::NewerVersion:
            return u"install the release that made the tables, or a later one";
        case ErrorCode::Locked:
            return u"end the process that holds the lock";
        case ErrorCode::ReadOnly:
            return u"let the user write the file once, so that its tables can be made";
        case ErrorCode::StorageFull:
            return u"make room on the disk";
        default:
            return u"see what the message says of the database";
    }
}

/// True when the module loads.
bool checkModule(Diagnosis& diagnosis, const char16_t* subject, const CStringW& path) {
    const corvane::LoadedModule module(path);
    if (module) {
        diagnosis.good(subject, module.file());
        return true;
    }
    if (module.fault().empty())
        diagnosis.wrong(subject, u"there is no " + shownPath(path),
                        u"install the module, or correct module1 in ConfigModule.ini");
    else
        diagnosis.wrong(subject, shownPath(path) + u" won't load: " + CStringW(module.fault()),
                        u"install what the module needs");
    return false;
}

void checkConnection(Diagnosis& diagnosis) {
    constexpr const char16_t* kSubject = u"connection";
    qor_db::IDatabaseCollector* collector = qor_db::QORDataHelper::getInstance();
    if (!collector) {
        diagnosis.wrong(kSubject, u"the collector module gives no collector",
                        u"install the module of this release");
        return;
    }
    const qor_db::ConnectionInfo info = collector->connection();
    const qor_db::Status& status = collector->status();
    const bool isFile = info.type == IConnectorData::DATABASETYPE_SQLITE;
    CStringW text = isFile ? shownPath(info.database) : info.database;
    if (status.ok()) {
        text.AppendFormat(u": open%s, reference tables of version %d",
                          info.readOnly ? u" for reading" : u"", info.schemaVersion);
        diagnosis.good(kSubject, text);
    } else if (status.code == ErrorCode::NoSchema) {
        diagnosis.note(
            kSubject,
            text + u": open, without reference tables; \"corvane db install\" makes them");
    } else {
        diagnosis.wrong(kSubject, text + u": " + status.message, remedyOf(status.code));
    }
}

}  // namespace

void checkDatabase(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration) {
    diagnosis.section(u"Rule database");
    const ConfiguredDatabase database = qor_db::QORDataHelper::configured();
    const bool isFile = database.type == IConnectorData::DATABASETYPE_SQLITE;
    diagnosis.good(u"type", isFile ? u"SQLite, a file" : u"MSSQL, a server");
    if (!checkModule(diagnosis, u"collector module", database.collectorModule)) return;
    if (database.driverModule.IsEmpty()) {
        diagnosis.wrong(u"driver module", u"none is configured",
                        u"let module1 in ConfigModule.ini name one");
        return;
    }
    if (!checkModule(diagnosis, u"driver module", database.driverModule)) return;
    // Connecting makes what is missing, as any use of the database does.
    if (isFile && presenceOfFile(shownPath(database.file)) == Presence::Missing)
        diagnosis.note(u"connection", shownPath(database.file) +
                                          u" is not there; the first use of the database makes it");
    else if (presenceOfFolder(configuration.settingsFolder) == Presence::Missing)
        diagnosis.note(u"connection", u"not tried before the settings folder is there");
    else
        checkConnection(diagnosis);
}
