#include <corvane/platform/Environment.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/ConfigurationLines.h"
#include "doctor/Places.h"

using corvane::ConfigurationEntry;
using corvane::ModuleConfiguration;
using corvane::configuration::kFile;
using corvane::configuration::kScriptFolder;
using corvane::configuration::kScriptSection;

namespace {

constexpr Message kScriptLine = "write \"directory=FOLDER\" below \"[RULE_SCRIPT_LOCATION]\"";

/// True when files in the settings folder can be reached, were there any.
bool checkSettingsFolder(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    const CStringW subject = tr("settings folder");
    diagnosis.noteRelative(tr("data folder"), corvane::GetEnvironmentText(u"CORVANE_DATA_DIR"));
    const CStringW folder = shownPath(configuration.settingsFolder);
    const Presence presence = presenceOfFolder(folder);
    if (presence == Presence::Readable)
        diagnosis.good(subject, folder);
    else if (presence == Presence::Unreadable)
        diagnosis.wrong(subject, tr("{0} cannot be read", folder),
                        tr("let the user read the folder"));
    else if (canBeMade(folder))
        diagnosis.note(subject,
                       tr("{0} is not there; the library makes it at its first use", folder));
    else if (const CStringW file = fileInTheWayOf(folder); !file.IsEmpty())
        diagnosis.wrong(subject, tr("{0} is no folder", file), tr("put a folder in its place"));
    else
        diagnosis.note(subject, tr("{0} is not there, and the user may not make it", folder));
    return presence != Presence::Unreadable;
}

void checkOrigin(Diagnosis& diagnosis, SettingsOrigin origin) {
    const CStringW subject = tr("settings");
    switch (origin) {
        case SettingsOrigin::Named:
            return diagnosis.good(subject, tr("those of --data or CORVANE_DATA_DIR"));
        case SettingsOrigin::User:
            return diagnosis.good(subject, tr("the user's own"));
        case SettingsOrigin::Machine:
            return diagnosis.good(subject, tr("the machine's"));
        case SettingsOrigin::Examples:
        case SettingsOrigin::None:
            break;
    }
    const std::optional<std::filesystem::path> user = userConfigurationFolder();
    const CStringW place =
        user ? tr("; your own go into {0}/Settings/ConfigModule.ini", user->u16string())
             : CStringW();
    diagnosis.note(subject, (origin == SettingsOrigin::Examples
                                 ? tr("there are none: those of the examples serve")
                                 : tr("there are none")) +
                                place);
}

CStringW lineOf(const ConfigurationEntry& entry) {
    // Any other value may be a connection string with a password.
    const CStringW value = looksLike(entry.key, kScriptFolder) ? entry.value : CStringW(u"...");
    return u"\"" + entry.key + u"=" + value + u"\"";
}

bool isScriptFolder(const ConfigurationEntry& entry) {
    return entry.section == kScriptSection && entry.key == kScriptFolder;
}

/// A live line that nobody reads. A person may take it for the script folder's.
void checkUnread(Diagnosis& diagnosis, const ConfigurationEntry& entry, bool isConfigured) {
    if (entry.commented) return;
    const bool meant =
        looksLike(entry.section, kScriptSection) || looksLike(entry.key, kScriptFolder);
    const CStringW text = tr("the line {0} below \"[{1}]\" is not read: case and blanks count",
                             lineOf(entry), entry.section);
    if (!meant)
        diagnosis.note(nameOf(entry), tr("nothing reads this key"));
    else if (isConfigured)
        diagnosis.note(nameOf(entry), text);
    else
        diagnosis.wrong(nameOf(entry), text, tr(kScriptLine));
}

/// A line that the library reads. `isFirst` says that no line before it counts.
void checkScriptEntry(Diagnosis& diagnosis, const ConfigurationEntry& entry, bool isFirst) {
    if (!isFirst)
        diagnosis.note(nameOf(entry),
                       tr("the line {0} is not read: an earlier one counts", lineOf(entry)));
    else if (entry.commented)
        diagnosis.wrong(nameOf(entry),
                        tr("the line {0} is commented out and counts all the same", lineOf(entry)),
                        tr("delete the line"));
    else
        diagnosis.good(nameOf(entry), entry.value);
}

/// Below a heading that is a line with a value, and so may be a connection string.
void checkOddHeading(Diagnosis& diagnosis, const ConfigurationEntry& entry, bool isConfigured) {
    // The first character of such a heading is lost.
    if (!isConfigured && entry.key == CStringW(kScriptFolder).Mid(1))
        diagnosis.wrong(kScriptFolder, tr("the value holds [ and ], so that the line is a heading"),
                        tr("name a folder without brackets"));
}

void checkMark(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    if (!configuration.byteOrderMark) return;
    const CStringW text = tr("it begins with a byte order mark, which spoils its first heading");
    if (configuration.scriptFolder)
        diagnosis.note(kFile, text + tr("; the script folder is found all the same"));
    else
        diagnosis.wrong(kFile, text, tr("save the file as UTF-8 without byte order mark"));
}

/// Only the reader of the script folder needs the line end. Of the line, which may be a connection
/// string, the key alone is told.
void checkLastLine(Diagnosis& diagnosis, CStringW line) {
    const bool isUtf16 = line.Find(u'\0') >= 0;
    if (isUtf16 || line.Trim().IsEmpty()) return;
    const int equals = line.Find(u'=');
    const CStringW key = equals < 0 ? line : line.Left(equals);
    if (looksLike(key, kScriptFolder))
        diagnosis.wrong(kFile, tr("its last line, \"{0}\", has no line end and is not read", key),
                        tr("end the line with a line end"));
    else
        diagnosis.note(
            kFile,
            tr("its last line, \"{0}\", has no line end; a script folder there would not be read",
               key));
}

void checkLines(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    checkMark(diagnosis, configuration);
    checkLastLine(diagnosis, configuration.cutLine);
    checkDatabaseKeys(diagnosis, configuration);
    const bool isConfigured = configuration.scriptFolder.has_value();
    bool found = false;
    for (const ConfigurationEntry& entry : configuration.entries) {
        if (entry.section.Find(u'=') >= 0) {
            checkOddHeading(diagnosis, entry, isConfigured);
        } else if (isScriptFolder(entry)) {
            checkScriptEntry(diagnosis, entry, !found);
            found = true;
        } else if (!checkDatabaseLine(diagnosis, entry, configuration) &&
                   !configuration.byteOrderMark) {  // that has been told
            checkUnread(diagnosis, entry, isConfigured);
        }
    }
}

}  // namespace

void checkConfiguration(Diagnosis& diagnosis, const ModuleConfiguration& configuration,
                        SettingsOrigin origin) {
    diagnosis.section(tr("Configuration"));
    checkOrigin(diagnosis, origin);
    if (!checkSettingsFolder(diagnosis, configuration)) return;
    const CStringW file = shownPath(configuration.file);
    if (configuration.readable) {
        diagnosis.good(kFile, file);
        checkLines(diagnosis, configuration);
    } else if (presenceOfFile(file) == Presence::Missing) {
        diagnosis.note(
            kFile, tr("there is none: no script rule runs, and the database is the default one"));
    } else {
        diagnosis.wrong(kFile, tr("{0} cannot be read", file),
                        tr("put a text file of at most 4 MB there that the user can read"));
    }
}
