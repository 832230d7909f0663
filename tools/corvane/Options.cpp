#include "Options.h"

#include <CLI/CLI.hpp>
#include <string>

#include <corvane/base/Version.h>

namespace {

constexpr const char* kDescription =
    "Checks parts against manufacturing rules.\n"
    "Rules stand in rule files: compiled ones in rule modules, user-defined ones as scripts.";
constexpr const char* kFooter =
    "Exit status: 0 all rules passed, 1 a rule failed, was not run or could not be made,\n"
    "2 bad usage, or a file that cannot be read or written.";

/// The texts as the command line gives them, in the process's code page.
struct RawOptions {
    std::vector<std::string> ruleFiles;
    std::string ruleFile;
    std::vector<std::string> moduleFolders;
    std::string output;
    std::string part;
    std::string dataFolder;
    std::string registryFolder;
    bool batch = false;
};

void addCommonOptions(CLI::App& command, RawOptions& raw) {
    command
        .add_option("--modules", raw.moduleFolders,
                    "Folder of rule modules, sought before lib/rules; may be repeated")
        ->type_name("DIR")
        ->allow_extra_args(false);
    command
        .add_option("--data", raw.dataFolder,
                    "Folder above Settings/ConfigModule.ini, else CORVANE_DATA_DIR")
        ->type_name("DIR");
    command
        .add_option("--registry", raw.registryFolder,
                    "Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR")
        ->type_name("DIR");
}

void addRun(CLI::App& app, RawOptions& raw) {
    CLI::App* run = app.add_subcommand("run", "Run the rules of rule files and print the results");
    run->add_option("RULEFILE", raw.ruleFiles, "Rule files")->required();
    run->add_option("--part", raw.part, "The part to check")
        ->type_name("FILE")
        ->envname("CORVANE_PART");
    run->add_flag("--batch", raw.batch, "Run without a user: no message boxes, no progress");
    addCommonOptions(*run, raw);
}

CLI::App* addShow(CLI::App& app, RawOptions& raw) {
    CLI::App* show =
        app.add_subcommand("show", "Show what a rule file holds, with each rule's definition");
    show->add_option("RULEFILE", raw.ruleFile, "Rule file")->required();
    addCommonOptions(*show, raw);
    return show;
}

CLI::App* addSave(CLI::App& app, RawOptions& raw) {
    CLI::App* save = app.add_subcommand(
        "save", "Read a rule file and write its rules to another one, with each rule's definition");
    save->add_option("RULEFILE", raw.ruleFile, "Rule file")->required();
    save->add_option("OUT", raw.output, "File to write; it is replaced as a whole")->required();
    addCommonOptions(*save, raw);
    return save;
}

CStringW wide(const std::string& text) {
    return CStringW(text.c_str());
}

std::vector<CStringW> wide(const std::vector<std::string>& texts) {
    std::vector<CStringW> result;
    result.reserve(texts.size());
    for (const std::string& text : texts)
        result.push_back(wide(text));
    return result;
}

Options optionsFrom(const RawOptions& raw, Command command) {
    Options options;
    options.command = command;
    options.ruleFiles = wide(raw.ruleFiles);
    if (command != Command::Run) options.ruleFiles.push_back(wide(raw.ruleFile));
    options.moduleFolders = wide(raw.moduleFolders);
    options.output = wide(raw.output);
    options.part = wide(raw.part);
    options.dataFolder = wide(raw.dataFolder);
    options.registryFolder = wide(raw.registryFolder);
    options.batch = raw.batch;
    return options;
}

}  // namespace

std::variant<Options, int> parseOptions(int argc, const char* const* argv) {
    RawOptions raw;
    CLI::App app(kDescription, "corvane");
    app.set_version_flag("--version", std::string("corvane ") + corvane::kVersion);
    app.footer(kFooter);
    app.require_subcommand(1);
    addRun(app, raw);
    const CLI::App* show = addShow(app, raw);
    const CLI::App* save = addSave(app, raw);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kAllPassed : kUnusable;
    }
    const Command command = show->parsed()   ? Command::Show
                            : save->parsed() ? Command::Save
                                             : Command::Run;
    return optionsFrom(raw, command);
}
