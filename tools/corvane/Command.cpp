#include "Command.h"

#include <CLI/CLI.hpp>

#include <corvane/platform/Environment.h>

namespace {

/// What is wrong with a script folder; empty when nothing is.
std::string isScriptFolder(const std::string& folder) {
    // The reader of settings takes a line with both for a heading.
    const bool isHeading = folder.find('[') != folder.npos && folder.find(']') != folder.npos;
    return isHeading ? trUtf8("{0} has brackets in its name", folder)
                     : CLI::ExistingDirectory(folder);
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

void FolderOptions::declare(CLI::App& command) {
    addTexts(command, "--modules", modules,
             "Folder of rule modules, sought before lib/rules; may be repeated")
        ->type_name("DIR")
        ->allow_extra_args(false);
    addText(command, "--scripts", scripts,
            "Folder of scripts and their index, in place of the one in the settings")
        ->type_name("DIR")
        ->check(isScriptFolder);
    declareData(command);
    addText(command, "--registry", registry,
            "Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR")
        ->type_name("DIR");
}

void FolderOptions::declareData(CLI::App& command) {
    addText(command, "--data", data,
            "Folder above Settings/ConfigModule.ini, else CORVANE_DATA_DIR, the user's or the "
            "machine's")
        ->type_name("DIR");
}

void FolderOptions::apply(bool mayMake) {
    if (!registry.IsEmpty()) corvane::SetEnvironmentText(u"CORVANE_REGISTRY_DIR", registry);
    settings.apply(data, scripts);
    settings.placeDatabase(mayMake);
}

CLI::App* addCommand(CLI::App& parent, const std::string& name, Message description) {
    CLI::App* command = parent.add_subcommand(name, trUtf8(description));
    command->group(trUtf8("Subcommands"));
    // The parser makes this option before it takes over what holds for the options of the parent.
    command->get_help_ptr()->group(trUtf8("Options"));
    return command;
}

CLI::Option* addText(CLI::App& command, const std::string& name, CStringW& target,
                     Message description) {
    return command.add_option_function<std::string>(
        name, [&target](const std::string& text) { target = CStringW(text.c_str()); },
        trUtf8(description));
}

CLI::Option* addTexts(CLI::App& command, const std::string& name, std::vector<CStringW>& targets,
                      Message description) {
    return command.add_option_function<std::vector<std::string>>(
        name,
        [&targets](const std::vector<std::string>& texts) {
            targets.clear();
            for (const std::string& text : texts)
                targets.emplace_back(text.c_str());
        },
        trUtf8(description));
}
