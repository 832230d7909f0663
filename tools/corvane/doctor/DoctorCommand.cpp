#include "Commands.h"
#include "doctor/Checks.h"

namespace {

class DoctorCommand : public Command {
public:
    explicit DoctorCommand(CLI::App& program)
        : Command(
              program, "doctor",
              "Look at the installation and its configuration, and tell what is wrong and how "
              "to mend it",
              "Exit status: 0 nothing is wrong, 1 something is, 2 bad usage. A note tells what\n"
              "is merely not set up. No file is made; modules are loaded to see whether they\n"
              "load, and a database that is opened gets its tables brought up to date, as by\n"
              "every use. The language is that which the library was loaded with, whatever "
              "--registry\n"
              "says.") {
        folders_.declare(parser(), FolderOptions::Missing::LeftToCommand);
    }

    int run(Console& console) override {
        folders_.apply(false);
        Diagnosis diagnosis;
        const corvane::ModuleConfiguration configuration = corvane::GetModuleConfiguration();
        checkInstallation(diagnosis);
        checkRegistry(diagnosis);
        checkConfiguration(diagnosis, configuration, folders_.settings.origin());
        checkScripts(diagnosis, configuration);
        checkScriptTexts(diagnosis, folders_.modules);
        checkHost(diagnosis, configuration);
        checkEngines(diagnosis, configuration);
        checkRuleModules(diagnosis, folders_.modules);
        checkDatabase(diagnosis, configuration);
        checkHelp(diagnosis);
        checkLogs(diagnosis);
        diagnosis.print(console);
        return diagnosis.isHealthy() ? kGood : kWrong;
    }

private:
    FolderOptions folders_;
};

}  // namespace

std::unique_ptr<Command> makeDoctorCommand(CLI::App& program) {
    return std::make_unique<DoctorCommand>(program);
}
