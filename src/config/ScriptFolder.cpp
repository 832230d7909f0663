#include "config/ScriptFolder.h"

#include "config/CIniFile.h"
#include "config/FrameworkUtils.h"
#include "platform/CodePage.h"

namespace corvane::config {

std::optional<CStringW> scriptFolder() {
    return scriptFolder(FrameworkUtils().GetConfigModuleFile());
}

std::optional<CStringW> scriptFolder(const CStringW& configFile) {
    const std::string file = platform::narrow(configFile);
    const IniRecords found = CIniFile().GetRecord("directory", "RULE_SCRIPT_LOCATION", file);
    if (found.empty()) return std::nullopt;
    return CStringW(platform::widen(found.front().Value));
}

}  // namespace corvane::config
