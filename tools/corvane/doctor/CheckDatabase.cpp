#include <algorithm>

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "files/ModuleFault.h"

using qor_db::ConfiguredDatabase;
using qor_db::ErrorCode;
using qor_db::IConnectorData;

namespace {

constexpr const char16_t* kConnection = u"connection";
constexpr const char16_t* kOtherFile =
    u"let FileName in ConfigModule.ini name a file that the user may make, read and write";

const char16_t* fileRemedy(ErrorCode code) {
    switch (code) {
        case ErrorCode::DriverNotLoaded:
            return u"let module1 in ConfigModule.ini name a driver module, or take the line out";
        case ErrorCode::Damaged:
            return u"put a backup in its place, or delete the file: a new one is made";
        case ErrorCode::ReadOnly:
            return u"let the user write the file once, so that its tables can be made";
        case ErrorCode::StorageFull:
            return u"make room on the disk";
        default:
            return kOtherFile;
    }
}

const char16_t* serverRemedy(ErrorCode code) {
    switch (code) {
        case ErrorCode::DriverNotLoaded:
            return u"let DRIVER in ConnectionString name an ODBC driver that is installed";
        case ErrorCode::Missing:
            return u"let module1 in ConfigModule.ini name the driver module of servers, "
                   u"QorOdbcDatabaseu, and ConnectionString the server";
        default:
            return u"correct ConnectionString in ConfigModule.ini, or start the server";
    }
}

const char16_t* remedyOf(ErrorCode code, bool isFile) {
    if (code == ErrorCode::NewerVersion)
        return u"install the release that made the tables, or a later one";
    if (code == ErrorCode::Locked) return u"wait for the process that holds the lock, or end it";
    return isFile ? fileRemedy(code) : serverRemedy(code);
}

/// True when the module loads.
bool checkModule(Diagnosis& diagnosis, const char16_t* subject, const CStringW& path,
                 const char16_t* remedy) {
    const corvane::LoadedModule module(path);
    if (module)
        diagnosis.good(subject, module.file());
    else
        diagnosis.wrong(subject, moduleFault(module, path), remedy);
    return static_cast<bool>(module);
}

/// Without FileName the database lies in the folder of a variable, joined as it stands.
void checkDefaultFolder(Diagnosis& diagnosis, const CStringW& file) {
    constexpr const char16_t* kSubject = u"database folder";
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_DATABASE_DIR");
    if (folder.IsEmpty()) return;
    diagnosis.noteRelative(kSubject, folder);
    if (presenceOfFolder(shownPath(folder)) == Presence::Missing)
        diagnosis.wrong(kSubject, folder + u" is not there, so that the default one counts",
                        u"make it, or let CORVANE_DATABASE_DIR name another");
    else if (lastName(folder).empty())
        diagnosis.good(kSubject, folder);
    else
        diagnosis.wrong(kSubject,
                        folder + u" has no separator at its end, so that the file is " + file,
                        u"end the value of CORVANE_DATABASE_DIR with a separator");
}

bool checkMissingFile(Diagnosis& diagnosis, const CStringW& file) {
    if (presenceOfFile(file) != Presence::Missing) return false;
    if (canBeMade(file))
        diagnosis.note(kConnection,
                       file + u" is not there; the first use of the database makes it");
    else
        diagnosis.wrong(kConnection, file + u" is not there, and the user may not make it",
                        kOtherFile);
    return true;
}

void checkConnection(Diagnosis& diagnosis) {
    qor_db::IDatabaseCollector* collector = qor_db::QORDataHelper::getInstance();
    if (!collector) {
        diagnosis.wrong(kConnection, u"the collector module gives no collector",
                        u"install the module of this release");
        return;
    }
    const qor_db::ConnectionInfo info = collector->connection();
    const qor_db::Status& status = collector->status();
    const bool isFile = info.type == IConnectorData::DATABASETYPE_SQLITE;
    CStringW text = isFile ? shownPath(info.database) : info.database;
    if (!text.IsEmpty()) text += u": ";
    if (status.ok()) {
        text.AppendFormat(u"open%s, reference tables of version %d",
                          info.readOnly ? u" for reading" : u"", info.schemaVersion);
        diagnosis.good(kConnection, text);
    } else if (status.code == ErrorCode::NoSchema) {
        diagnosis.note(kConnection,
                       text + u"open, without reference tables; \"corvane db install\" makes them");
    } else {
        const bool isNamed = status.message.Find(info.database) >= 0;
        diagnosis.wrong(kConnection, isNamed ? status.message : text + status.message,
                        remedyOf(status.code, isFile));
    }
}

}  // namespace

void checkDatabase(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration) {
    diagnosis.section(u"Rule database");
    const ConfiguredDatabase database = qor_db::QORDataHelper::configured();
    const bool isFile = database.type == IConnectorData::DATABASETYPE_SQLITE;
    diagnosis.good(u"type", isFile ? u"SQLite, a file" : u"MSSQL, a server");
    if (isFile && database.isDefaultFile) checkDefaultFolder(diagnosis, shownPath(database.file));
    if (!checkModule(diagnosis, u"collector module", database.collectorModule, kReinstall)) return;
    if (database.driverModule.IsEmpty()) {
        diagnosis.wrong(u"driver module", u"none is configured",
                        u"let module1 in ConfigModule.ini name one");
        return;
    }
    const bool isConfigured =
        std::ranges::any_of(configuration.databaseKeys, [](const auto& entry) {
            return entry.key == CStringW(corvane::configuration::kDriverModule);
        });
    if (!checkModule(diagnosis, u"driver module", database.driverModule,
                     isConfigured ? u"correct module1 in ConfigModule.ini, or install that module "
                                    u"with what it needs"
                                  : kReinstall))
        return;
    // Connecting makes what is missing, as any use of the database does.
    if (isFile && checkMissingFile(diagnosis, shownPath(database.file))) return;
    if (presenceOfFolder(configuration.settingsFolder) == Presence::Missing)
        diagnosis.note(kConnection, u"not tried before the settings folder is there");
    else
        checkConnection(diagnosis);
}
