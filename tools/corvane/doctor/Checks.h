#pragma once

#include <vector>

#include <corvane/config/ModuleConfiguration.h>
#include <corvane/text/CStringW.h>

#include "doctor/Diagnosis.h"
#include "language/Messages.h"
#include "settings/Settings.h"

// What `corvane doctor` looks at, each a section or a part of one. None makes a folder or a file
// that stays.

inline constexpr Message kReinstall = "install the library again as a whole";

void checkInstallation(Diagnosis& diagnosis);
void checkRegistry(Diagnosis& diagnosis);
void checkConfiguration(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration,
                        SettingsOrigin origin);
void checkScripts(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration);
/// What lint finds in the scripts of the index and in the limits of scripts.
void checkScriptTexts(Diagnosis& diagnosis, const std::vector<CStringW>& moduleFolders);
void checkHost(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration);
void checkEngines(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration);
void checkRuleModules(Diagnosis& diagnosis, const std::vector<CStringW>& folders);
void checkDatabase(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration);
void checkHelp(Diagnosis& diagnosis);
void checkLogs(Diagnosis& diagnosis);
