#include "Command.h"

#include <CLI/CLI.hpp>

#include <corvane/platform/Environment.h>

namespace {

std::string isFolder(const std::string& folder) {
    return CLI::ExistingDirectory(folder);
}

/// What is wrong with a script folder; empty when nothing is.
std::string isScriptFolder(const std::string& folder) {
    // The reader of settings takes a line with both for a heading.
    const bool isHeading = folder.find('[') != folder.npos && folder.find(']') != folder.npos;
    return isHeading ? trUtf8("{0} has brackets in its name", folder) : isFolder(folder);
}

}  // namespace

Command::Command(CLI::App& program, const char* name, Message description, Message exitStatuses)
    : parser_(addCommand(program, name, description)) {
    parser_->footer(trUtf8(exitStatuses));
}

Command::Command(CLI::App& program, const char* name) : parser_(program.add_subcommand(name, "")) {
    parser_->group("");
}

bool Command::isChosen() const {
    return parser_->parsed();
}

void FolderOptions::declare(CLI::App& command, Missing missing) {
    Option modulesOption =
        addTexts(command, "--modules", modules,
                 "Folder of rule modules, sought before lib/rules; may be repeated")
            .typeName("DIR")
            .oneEach();
    addText(command, "--scripts", scripts,
            "Folder of scripts and their index, in place of the one in the settings")
        .typeName("DIR")
        .check(isScriptFolder);
    declareData(command, missing);
    Option registryOption = addText(command, "--registry", registry,
                                    "Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR")
                                .typeName("DIR");
    if (missing == Missing::LeftToCommand) return;
    modulesOption.check(isFolder);
    registryOption.check(isFolder);
}

void FolderOptions::declareData(CLI::App& command, Missing missing) {
    Option option = addText(command, "--data", data,
                            "Folder above Settings/ConfigModule.ini, else CORVANE_DATA_DIR, the "
                            "user's or the machine's")
                        .typeName("DIR");
    if (missing == Missing::Refused) option.check(isFolder);
}

void FolderOptions::apply(bool mayMake) {
    if (!registry.IsEmpty()) corvane::SetEnvironmentText(u"CORVANE_REGISTRY_DIR", registry);
    settings.apply(data, scripts);
    settings.placeDatabase(mayMake);
}
