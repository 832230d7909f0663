#include "config/ScriptFolder.h"

#include "config/CIniFile.h"
#include "config/FrameworkUtils.h"
#include "system/Unicode.h"

namespace corvane::config {

std::optional<CStringW> scriptFolder() {
    return scriptFolder(FrameworkUtils().GetConfigModuleFile());
}

std::optional<CStringW> scriptFolder(const CStringW& configFile) {
    const std::string file = system::narrow(configFile);
    const IniRecords found = CIniFile().GetRecord("directory", "RULE_SCRIPT_LOCATION", file);
    if (found.empty()) return std::nullopt;
    return CStringW(system::widen(found.front().Value));
}

}  // namespace corvane::config
