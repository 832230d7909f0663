#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string>

#include <corvane/base/Version.h>
#include <corvane/platform/ComError.h>

#include "Commands.h"
#include "ParserTexts.h"
#include "Signals.h"
#include "Suggestion.h"
#include "Text.h"

namespace {

constexpr Message kDescription =
    "Checks parts against manufacturing rules.\n"
    "Rules are in rule files: compiled ones in rule modules, user-defined ones as scripts.";
constexpr Message kFooter =
    "Exit status: 0 all is well, 1 something is not, as the command's own help tells,\n"
    "2 bad usage, or a file that cannot be read or written.";

// In the order of the help.
constexpr std::unique_ptr<Command> (*kMakers[])(CLI::App&) = {
    makeCheckCommand,    makeRunCommand,        makeLintCommand,    makeMergeCommand,
    makeShowCommand,     makeSaveCommand,       makeConvertCommand, makeDiffCommand,
    makeUnitCommand,     makeDbCommand,         makeDoctorCommand,  makeNewCommand,
    makeRegisterCommand, makeCompletionCommand, makeWorkerCommand,  makeLintWorkerCommand};

const std::string kVersionOption = "--version";

std::string versionText() {
    return std::string("corvane ") + corvane::kVersion;
}

constexpr Message kNoMemory = "the memory ran out";

/// Says why the program ends, of the exception that is being handled. It takes no memory, which may
/// be what ran out.
int giveUp() {
    try {
        throw;
    } catch (const _com_error& error) {
        if (error.Error() == corvane::kErrorOutOfMemory) {
            std::fprintf(stderr, "corvane: %s\n", kNoMemory.own().data());
        } else {
            std::fprintf(stderr, "corvane: %s\n",
                         trUtf8("the library failed with {0}", statusText(error.Error())).c_str());
        }
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "corvane: %s\n", kNoMemory.own().data());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corvane: %s\n", error.what());
    } catch (...) {
        std::fprintf(stderr, "corvane: %s\n", trUtf8("an unknown error ended the program").c_str());
    }
    return kUnusable;
}

int runCommand(Command& command, Console& console) {
    try {
        return command.run(console);
    } catch (...) {
        console.clearProgress();
        return giveUp();
    }
}

int runChosen(const std::vector<std::unique_ptr<Command>>& commands) {
    catchSignals();
    for (const std::unique_ptr<Command>& command : commands) {
        if (!command->isChosen()) continue;
        Console console(command->isBatch());
        const int status = runCommand(*command, console);
        if (console.finish()) return status;
        console.report(u"corvane: " + tr("the results cannot be written"));
        return kUnusable;
    }
    return kUnusable;
}

/// The status, unless what was printed could not be.
int statusOfPrinted(int status) {
    if (std::cout.flush()) return status;
    std::fprintf(stderr, "corvane: %s\n", trUtf8("the results cannot be written").c_str());
    return kUnusable;
}

int runProgram(int argc, char** argv) {
    // Alone it needs none of the commands, and scripts ask for it often.
    if (argc == 2 && argv[1] == kVersionOption) {
        std::cout << versionText() << '\n';
        return statusOfPrinted(kGood);
    }
    CLI::App program(trUtf8(kDescription), "corvane");
    program.set_version_flag(kVersionOption, versionText(),
                             trUtf8("Display program version information and exit"));
    speakUsersLanguage(program);
    program.footer(trUtf8(kFooter));
    program.require_subcommand(1);
    std::vector<std::unique_ptr<Command>> commands;
    for (const auto make : kMakers)
        commands.push_back(make(program));
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int status = program.exit(error) == 0 ? kGood : kUnusable;
        const std::string meant =
            status == kGood ? std::string() : suggestionFor(program, argc, argv);
        if (!meant.empty()) std::cerr << meant << '\n';
        return statusOfPrinted(status);
    }
    return runChosen(commands);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return runProgram(argc, argv);
    } catch (...) {
        return giveUp();
    }
}
