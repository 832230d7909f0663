#include <algorithm>

#include <corvane/platform/Environment.h>

#include "doctor/Checks.h"
#include "doctor/ConfigurationLines.h"

using corvane::ConfigurationEntry;
using corvane::ModuleConfiguration;
using namespace corvane::configuration;

namespace {

/// The reader of the database's keys cuts what is longer.
constexpr int kLongestValue = 259;
constexpr int kLongestVariable = 49;

bool isPath(const ConfigurationEntry& key) {
    return key.key != kDatabaseType && key.key != kConnectionString;
}

/// What is wrong with the variable that a path begins with; empty when nothing is.
CStringW variableFault(const CStringW& path) {
    const int end = path.ReverseFind(u'%');
    if (end < 0) return {};
    const CStringW name = path.Mid(1, end - 1);
    if (name.GetLength() > kLongestVariable)
        return tr("the name of its variable has more than 49 characters and counts as empty");
    if (!corvane::GetEnvironmentText(name).empty()) return {};
    return tr("its variable \"{0}\" is not set and counts as empty", name);
}

void checkKey(Diagnosis& diagnosis, const ConfigurationEntry& key) {
    const CStringW& value = key.value;
    const CStringW fault = isPath(key) ? variableFault(value) : CStringW();
    if (value.GetLength() > kLongestValue)
        diagnosis.wrong(key.key, tr("the value is cut to 259 characters"),
                        tr("shorten it; a path may begin with %VARIABLE%"));
    else if (!fault.IsEmpty())
        diagnosis.wrong(key.key, value + u": " + fault,
                        tr("set the variable, or write the path without percent signs"));
    else if (key.key == kDatabaseType && !looksLike(value, u"SQLite") &&
             !looksLike(value, u"MSSQL"))
        diagnosis.note(key.key, tr("{0} is no known type and counts as SQLite", value));
    else
        diagnosis.good(key.key, key.key == kConnectionString ? tr("(set)") : value);
}

/// The value as a line of the file has it, without blanks and quotes around it.
CStringW bareValue(const ConfigurationEntry& line) {
    return CStringW(line.value).Trim().Trim(u"\"'").Trim();
}

}  // namespace

void checkDatabaseKeys(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    for (const ConfigurationEntry& key : configuration.databaseKeys)
        checkKey(diagnosis, key);
}

bool checkDatabaseLine(Diagnosis& diagnosis, const ConfigurationEntry& line,
                       const ModuleConfiguration& configuration) {
    if (!looksLike(line.section, kDatabaseSection)) return false;
    const auto names = [&](const char16_t* key) { return looksLike(line.key, key); };
    if (std::ranges::none_of(kDatabaseKeys, names)) return false;
    const auto isRead = [&](const ConfigurationEntry& key) {
        return looksLike(line.key, key.key) &&
               CStringW(key.value).Trim(u"\"'").Trim() == bareValue(line);
    };
    if (!line.commented && !bareValue(line).IsEmpty() &&
        std::ranges::none_of(configuration.databaseKeys, isRead))
        diagnosis.note(nameOf(line), tr("a line with this key is not read: an earlier one, or an "
                                        "earlier section of this name, counts"));
    return true;
}
