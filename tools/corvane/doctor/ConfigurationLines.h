#pragma once

#include <corvane/config/ModuleConfiguration.h>
#include <corvane/text/CStringW.h>

#include "doctor/Diagnosis.h"

// The lines of ConfigModule.ini, as far as the look at the database shares them.

using corvane::configuration::kDatabaseSection;

/// True for what a person takes for that name.
inline bool looksLike(CStringW text, const char16_t* name) {
    return text.Trim().CompareNoCase(name) == 0;
}

inline CStringW nameOf(const corvane::ConfigurationEntry& entry) {
    return CStringW(entry.key).Trim();
}

/// Looks at the database's keys.
void checkDatabaseKeys(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration);

/// True for a line with one of those keys; notes one that does not count.
bool checkDatabaseLine(Diagnosis& diagnosis, const corvane::ConfigurationEntry& line,
                       const corvane::ModuleConfiguration& configuration);
