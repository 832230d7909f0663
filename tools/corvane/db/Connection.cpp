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
    if (!info.open) return u"not open";
    return info.readOnly ? u"open, for reading" : u"open";
}

CStringW tablesText(const ConnectionInfo& info) {
    if (!info.open) return {};
    CStringW text = u"none; \"corvane db install\" makes them";
    if (info.schemaVersion > 0) text.Format(u"version %d", info.schemaVersion);
    return text;
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
    console.writeField(u"type", isFile ? u"SQLite" : u"MSSQL");
    console.writeField(u"driver", driverText(info));
    console.writeField(isFile ? u"file" : u"connection",
                       isFile ? shownPath(info.database) : info.database);
    console.writeField(u"state", stateText(info), info.open ? Tone::Good : Tone::Bad);
    console.writeField(u"tables", tablesText(info));
    if (status.ok()) return kGood;
    console.writeField(u"problem", status.message, Tone::Bad);
    return kWrong;
}

int installTables(qor_db::IDatabaseCollector& collector, Console& console) {
    const Status status = collector.installSchema();
    if (!status.ok()) return reportStatus(status, console);
    CStringW text;
    text.Format(u"The reference tables have version %d.", collector.connection().schemaVersion);
    console.writeLine(text);
    return kGood;
}

int reportStatus(const Status& status, Console& console) {
    console.report(status.message);
    const bool misused =
        status.code == ErrorCode::BadQuery || status.code == ErrorCode::BadParameter;
    return misused ? kUnusable : kWrong;
}
