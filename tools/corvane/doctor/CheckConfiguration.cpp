#include <algorithm>

#include <corvane/platform/Environment.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"

using corvane::ConfigurationEntry;
using corvane::ModuleConfiguration;

namespace {

constexpr const char16_t* kFile = u"ConfigModule.ini";
constexpr const char16_t* kScriptSection = u"RULE_SCRIPT_LOCATION";
constexpr const char16_t* kDatabaseSection = u"RULE_DATABASE_MODULES";
constexpr const char16_t* kScriptKey = u"directory";
constexpr const char16_t* kConnectionKey = u"ConnectionString";
constexpr const char16_t* kDatabaseKeys[] = {u"DatabaseType", u"module1", kConnectionKey,
                                             u"FileName"};
/// The reader of the database's keys cuts what is longer.
constexpr int kLongestDatabaseValue = 259;

/// True for what a person takes for that name.
bool looksLike(CStringW text, const char16_t* name) {
    return text.Trim().CompareNoCase(name) == 0;
}

CStringW nameOf(const ConfigurationEntry& entry) {
    return CStringW(entry.key).Trim();
}

void checkFolders(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    const CStringW root = corvane::GetEnvironmentText(u"CORVANE_DATA_DIR");
    if (!root.IsEmpty() && !placeOf(root).is_absolute())
        diagnosis.note(u"data folder",
                       root + u" is no full path and depends on the working folder");
    const CStringW folder = shownPath(configuration.settingsFolder);
    switch (presenceOfFolder(folder)) {
        case Presence::Readable:
            diagnosis.good(u"settings folder", folder);
            break;
        case Presence::Missing:
            diagnosis.note(u"settings folder",
                           folder + u" is not there; the library makes it at its first use");
            break;
        case Presence::Unreadable:
            diagnosis.wrong(u"settings folder", folder + u" cannot be read",
                            u"let the user read the folder");
    }
}

CStringW lineOf(const ConfigurationEntry& entry) {
    return u"the line \"" + entry.key + u"=" + entry.value + u"\"";
}

bool isScriptFolder(const ConfigurationEntry& entry) {
    return entry.section == kScriptSection && entry.key == kScriptKey;
}

/// A live line that a person takes for the script folder's and the library does not.
void checkMisspelt(Diagnosis& diagnosis, const ConfigurationEntry& entry, bool isConfigured) {
    const bool meant = looksLike(entry.section, kScriptSection) && looksLike(entry.key, kScriptKey);
    if (!meant || entry.commented) return;
    const CStringW text =
        lineOf(entry) + u" below \"[" + entry.section + u"]\" is not read: case and blanks count";
    if (isConfigured)
        diagnosis.note(nameOf(entry), text);
    else
        diagnosis.wrong(nameOf(entry), text,
                        u"write \"directory=FOLDER\" below \"[RULE_SCRIPT_LOCATION]\"");
}

/// A line that the library reads. `isFirst` says that no line before it counts.
void checkScriptEntry(Diagnosis& diagnosis, const ConfigurationEntry& entry, bool isFirst) {
    if (!isFirst)
        diagnosis.note(nameOf(entry), lineOf(entry) + u" is not read: an earlier one counts");
    else if (entry.commented)
        diagnosis.wrong(nameOf(entry), lineOf(entry) + u" is commented out and counts all the same",
                        u"delete the line");
    else
        diagnosis.good(nameOf(entry), entry.value);
}

void checkDatabaseEntry(Diagnosis& diagnosis, const ConfigurationEntry& entry) {
    if (entry.commented || !looksLike(entry.section, kDatabaseSection)) return;
    const bool known = std::ranges::any_of(
        kDatabaseKeys, [&](const char16_t* key) { return looksLike(entry.key, key); });
    if (!known) {
        diagnosis.note(nameOf(entry), u"nothing reads this key");
    } else if (CStringW(entry.value).Trim().GetLength() > kLongestDatabaseValue) {
        diagnosis.wrong(nameOf(entry), u"the value is cut to 259 characters",
                        u"shorten it; a path may begin with %VARIABLE%");
    } else {
        // A connection string may hold a password.
        const bool secret = looksLike(entry.key, kConnectionKey);
        diagnosis.good(nameOf(entry), secret ? CStringW(u"(set)") : CStringW(entry.value).Trim());
    }
}

void checkMark(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    if (!configuration.byteOrderMark) return;
    const CStringW text = u"it begins with a byte order mark, which spoils its first heading";
    if (configuration.scriptFolder)
        diagnosis.note(kFile, text + u"; the script folder is found all the same");
    else
        diagnosis.wrong(kFile, text, u"save the file as UTF-8 without byte order mark");
}

/// Only the reader of the script folder needs the line end. Of the line, which may be a connection
/// string, the key alone is told.
void checkLastLine(Diagnosis& diagnosis, CStringW line) {
    if (line.Trim().IsEmpty()) return;
    const int equals = line.Find(u'=');
    const CStringW key = equals < 0 ? line : line.Left(equals);
    const CStringW text = u"its last line, \"" + key + u"\", has no line end";
    if (looksLike(key, kScriptKey))
        diagnosis.wrong(kFile, text + u" and is not read", u"end the line with a line end");
    else
        diagnosis.note(kFile, text + u"; a script folder there would not be read");
}

void checkLines(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    checkMark(diagnosis, configuration);
    checkLastLine(diagnosis, configuration.cutLine);
    bool found = false;
    for (const ConfigurationEntry& entry : configuration.entries) {
        checkDatabaseEntry(diagnosis, entry);
        if (!isScriptFolder(entry)) {
            checkMisspelt(diagnosis, entry, configuration.scriptFolder.has_value());
            continue;
        }
        checkScriptEntry(diagnosis, entry, !found);
        found = true;
    }
}

}  // namespace

void checkConfiguration(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    diagnosis.section(u"Configuration");
    checkFolders(diagnosis, configuration);
    const CStringW file = shownPath(configuration.file);
    if (configuration.readable) {
        diagnosis.good(kFile, file);
        checkLines(diagnosis, configuration);
    } else if (presenceOfFile(file) == Presence::Missing) {
        diagnosis.note(kFile,
                       u"there is none: no script rule runs, and the database is the default one");
    } else {
        diagnosis.wrong(kFile, file + u" cannot be read",
                        u"put a text file of at most 4 MB there that the user can read");
    }
}
