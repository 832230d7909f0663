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

constexpr Message kConnection = "connection";
constexpr Message kOtherFile =
    "let FileName in ConfigModule.ini name a file that the user may make, read and write";

Message fileRemedy(ErrorCode code) {
    switch (code) {
        case ErrorCode::DriverNotLoaded:
            return "let module1 in ConfigModule.ini name a driver module, or take the line out";
        case ErrorCode::Damaged:
            return "put a backup in its place, or delete the file: a new one is made";
        case ErrorCode::ReadOnly:
            return "let the user write the file once, so that its tables can be made";
        case ErrorCode::StorageFull:
            return "make room on the disk";
        default:
            return kOtherFile;
    }
}

Message serverRemedy(ErrorCode code) {
    switch (code) {
        case ErrorCode::DriverNotLoaded:
            return "let DRIVER in ConnectionString name an ODBC driver that is installed";
        case ErrorCode::Missing:
            return "let module1 in ConfigModule.ini name the driver module of servers, "
                   "QorOdbcDatabaseu, and ConnectionString the server";
        default:
            return "correct ConnectionString in ConfigModule.ini, or start the server";
    }
}

Message remedyOf(ErrorCode code, bool isFile) {
    if (code == ErrorCode::NewerVersion)
        return "install the release that made the tables, or a later one";
    if (code == ErrorCode::Locked) return "wait for the process that holds the lock, or end it";
    return isFile ? fileRemedy(code) : serverRemedy(code);
}

/// True when the module loads.
bool checkModule(Diagnosis& diagnosis, Message subject, const CStringW& path, Message remedy) {
    const corvane::LoadedModule module(path);
    if (module)
        diagnosis.good(tr(subject), module.file());
    else
        diagnosis.wrong(tr(subject), moduleFault(module, path), tr(remedy));
    return static_cast<bool>(module);
}

/// Without FileName the database lies in the folder of a variable, joined as it is.
void checkDefaultFolder(Diagnosis& diagnosis, const CStringW& file) {
    const CStringW subject = tr("database folder");
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_DATABASE_DIR");
    if (folder.IsEmpty()) return;
    diagnosis.noteRelative(subject, folder);
    if (presenceOfFolder(shownPath(folder)) == Presence::Missing)
        diagnosis.wrong(subject, tr("{0} is not there, so that the default one counts", folder),
                        tr("make it, or let CORVANE_DATABASE_DIR name another"));
    else if (lastName(folder).empty())
        diagnosis.good(subject, folder);
    else
        diagnosis.wrong(
            subject, tr("{0} has no separator at its end, so that the file is {1}", folder, file),
            tr("end the value of CORVANE_DATABASE_DIR with a separator"));
}

bool checkMissingFile(Diagnosis& diagnosis, const CStringW& file) {
    if (presenceOfFile(file) != Presence::Missing) return false;
    if (canBeMade(file))
        diagnosis.note(tr(kConnection),
                       tr("{0} is not there; the first use of the database makes it", file));
    else
        diagnosis.wrong(tr(kConnection), tr("{0} is not there, and the user may not make it", file),
                        tr(kOtherFile));
    return true;
}

void checkConnection(Diagnosis& diagnosis) {
    qor_db::IDatabaseCollector* collector = qor_db::QORDataHelper::getInstance();
    if (!collector) {
        diagnosis.wrong(tr(kConnection), tr("the collector module gives no collector"),
                        tr("install the module of this release"));
        return;
    }
    const qor_db::ConnectionInfo info = collector->connection();
    const qor_db::Status& status = collector->status();
    const bool isFile = info.type == IConnectorData::DATABASETYPE_SQLITE;
    CStringW text = isFile ? shownPath(info.database) : info.database;
    if (!text.IsEmpty()) text += u": ";
    if (status.ok()) {
        text += info.readOnly
                    ? tr("open for reading, reference tables of version {0}", info.schemaVersion)
                    : tr("open, reference tables of version {0}", info.schemaVersion);
        diagnosis.good(tr(kConnection), text);
    } else if (status.code == ErrorCode::NoSchema) {
        diagnosis.note(
            tr(kConnection),
            text + tr("open, without reference tables; \"corvane db install\" makes them"));
    } else {
        const bool isNamed = status.message.Find(info.database) >= 0;
        diagnosis.wrong(tr(kConnection), isNamed ? status.message : text + status.message,
                        tr(remedyOf(status.code, isFile)));
    }
}

}  // namespace

void checkDatabase(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration) {
    diagnosis.section(tr("Rule database"));
    const ConfiguredDatabase database = qor_db::QORDataHelper::configured();
    const bool isFile = database.type == IConnectorData::DATABASETYPE_SQLITE;
    diagnosis.good(tr("type"), isFile ? tr("SQLite, a file") : tr("MSSQL, a server"));
    if (isFile && database.isDefaultFile) checkDefaultFolder(diagnosis, shownPath(database.file));
    if (!checkModule(diagnosis, "collector module", database.collectorModule, kReinstall)) return;
    if (database.driverModule.IsEmpty()) {
        diagnosis.wrong(tr("driver module"), tr("none is configured"),
                        tr("let module1 in ConfigModule.ini name one"));
        return;
    }
    const bool isConfigured =
        std::ranges::any_of(configuration.databaseKeys, [](const auto& entry) {
            return entry.key == CStringW(corvane::configuration::kDriverModule);
        });
    if (!checkModule(diagnosis, "driver module", database.driverModule,
                     isConfigured ? Message("correct module1 in ConfigModule.ini, or install that "
                                            "module with what it needs")
                                  : kReinstall))
        return;
    // Connecting makes what is missing, as any use of the database does.
    if (isFile && checkMissingFile(diagnosis, shownPath(database.file))) return;
    if (presenceOfFolder(configuration.settingsFolder) == Presence::Missing)
        diagnosis.note(tr(kConnection), tr("not tried before the settings folder is there"));
    else
        checkConnection(diagnosis);
}
