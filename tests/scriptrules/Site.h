#pragma once

#include <initializer_list>
#include <string>

#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

/// An installation of a test's own: registry, configuration and script folder, with the test host
/// as the script host.
class Site {
public:
    Site() {
        const std::string id = "{5B0E6A0D-93C4-4F1B-8F57-2E4C1D7A96B3}";
        configure("[RULE_SCRIPT_LOCATION]\ndirectory=" + folder.path("scripts") + "\n");
        enter("HKEY_CLASSES_ROOT\\", {"QorScriptHost.ScriptProcessor\\CLSID=" + id,
                                      "CLSID\\" + id + "\\InprocServer32=" + CORVANE_SCRIPT_HOST});
    }

    void configure(const std::string& ini) const {
        folder.write("data/Settings/ConfigModule.ini", ini);
    }
    /// Adds keys to the registry, each "key=default value" or "key" alone.
    void enter(const std::string& root, std::initializer_list<std::string> keys) {
        for (const std::string& key : keys) {
            const std::size_t end = key.find('=');
            registry_ += "[" + root + key.substr(0, end) + "]\n";
            if (end != key.npos) registry_ += "@=\"" + key.substr(end + 1) + "\"\n";
        }
        folder.write("registry/machine.reg", registry_);
    }

    const TemporaryFolder folder;

private:
    std::string registry_ = "Windows Registry Editor Version 5.00\n\n";
    EnvironmentScope registryFolder_{"CORVANE_REGISTRY_DIR", folder.path("registry")};
    EnvironmentScope dataFolder_{"CORVANE_DATA_DIR", folder.path("data")};
};
