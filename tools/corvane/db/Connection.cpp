#include <corvane/platform/LoadedModule.h>

#include "Command.h"
#include "Text.h"
#include "db/Actions.h"

using qor_db::ConnectionInfo;
using qor_db::ErrorCode;
using qor_db::IConnectorData;
using qor_db::Status;

namespace {

CStringW stateText(const ConnectionInfo& info) {
    if (!info.open) return tr("not open");
    return info.readOnly ? tr("open, for reading") : tr("open");
}

CStringW tablesText(const ConnectionInfo& info) {
    if (!info.open) return {};
    return info.schemaVersion > 0 ? tr("version {0}", info.schemaVersion)
                                  : tr("none; \"corvane db install\" makes them");
}

/// The driver's file; its name when it won't load.
CStringW driverText(const ConnectionInfo& info) {
    const corvane::LoadedModule module(info.driverModule);
    return module ? CStringW(module.file()) : shownPath(info.driverModule);
}

}  // namespace

int showConnection(qor_db::IDatabaseCollector& collector, Console& console) {
    const ConnectionInfo info = collector.connection();
    const Status& status = collector.status();
    const bool isFile = info.type == IConnectorData::DATABASETYPE_SQLITE;
    console.writeField(tr("type"), isFile ? u"SQLite" : u"MSSQL");
    console.writeField(tr("driver"), driverText(info));
    console.writeField(isFile ? tr("file") : tr("connection"),
                       isFile ? shownPath(info.database) : info.database);
    console.writeField(tr("state"), stateText(info), info.open ? Tone::Good : Tone::Bad);
    console.writeField(tr("tables"), tablesText(info));
    if (status.ok()) return kGood;
    console.writeField(tr("problem"), status.message, Tone::Bad);
    return kWrong;
}

int installTables(qor_db::IDatabaseCollector& collector, Console& console) {
    const Status status = collector.installSchema();
    if (!status.ok()) return reportStatus(status, console);
    console.writeLine(
        tr("The reference tables have version {0}.", collector.connection().schemaVersion));
    return kGood;
}

int reportStatus(const Status& status, Console& console) {
    console.report(status.message);
    const bool misused =
        status.code == ErrorCode::BadQuery || status.code == ErrorCode::BadParameter;
    return misused ? kUnusable : kWrong;
}
