#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Process.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

/// The program with a folder of its own: settings, a script folder and the registration of script
/// host and engine.
class CommandLine {
public:
    CommandLine() {
        std::filesystem::create_directories(databases());
        folder.write("data/Settings/ConfigModule.ini",
                     "[RULE_SCRIPT_LOCATION]\ndirectory=" + folder.path("scripts") + "\n");
        for (const char* name : {"machine.reg", "user.reg"})
            folder.write(std::string("registry/") + name, exampleRegistry(name));
    }

    /// The folder of the default database; empty at first.
    std::string databases() const { return folder.path("db") + '/'; }

    /// Runs `corvane` with these arguments. A path that begins with "@" is one of the folder.
    ProcessResult operator()(const std::string& command, std::vector<std::string> arguments,
                             const std::string& terminal = {}) const {
        std::vector<std::string> all{CORVANE_BUILD_DIR "/bin/corvane", command};
        for (const std::string& argument : arguments)
            all.push_back(argument.starts_with('@') ? folder.path(argument.substr(1)) : argument);
        return runProcess(std::move(all), terminal);
    }

    static std::string exampleRegistry(const std::string& name) {
        return TemporaryFolder::readFile(CORVANE_BUILD_DIR "/examples/registry/" + name);
    }
    static std::string part(const std::string& name) {
        return CORVANE_TEST_DATA "/../examples/parts/" + name + ".stl";
    }

    TemporaryFolder folder;

private:
    EnvironmentScope data_{"CORVANE_DATA_DIR", folder.path("data")};
    EnvironmentScope registry_{"CORVANE_REGISTRY_DIR", folder.path("registry")};
    EnvironmentScope database_{"CORVANE_DATABASE_DIR", databases()};
    EnvironmentScope part_{"CORVANE_PART", nullptr};
    EnvironmentScope colour_{"NO_COLOR", nullptr};
    EnvironmentScope terminal_{"TERM", "xterm"};
    EnvironmentScope locale_{"LC_ALL", "C"};
};

/// The engine of the examples, as a rule element names it.
inline const std::string kMeshEngine =
    "<Engines><Engine Engine='mesh.tlb' GUID='{C48CD337-1FE4-4A73-B59A-BC6D746DA082}' "
    "MajorVersion='1' MinorVersion='0' LCID='0'/></Engines>";

inline std::string ruleFile(const std::string& rules) {
    return "<RuleFile>\n" + rules + "\n</RuleFile>\n";
}
inline std::string scriptRule(const std::string& name, const std::string& script,
                              const std::string& children = {}) {
    return "<Rule Name='" + name + "' Severity='2' CategoryText='General' File='" + script + "'>" +
           children + "</Rule>";
}
inline std::string moduleRule(const std::string& name, const std::string& children = {},
                              const std::string& file = "partrules.dll") {
    return "<Rule Name='" + name + "' Severity='2' RuleCategory='Milling' File='" + file + "'>" +
           children + "</Rule>";
}
/// A parameter; each value is given as its element.
inline std::string parameter(int number, const std::string& values, int paramType = 0) {
    return "<Parameter Type='" + std::to_string(number) +
           "'><Operator>2</Operator><ParameterType>" + std::to_string(paramType) +
           "</ParameterType>" + values + "</Parameter>";
}
