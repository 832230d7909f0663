#pragma once

#include <string>
#include <vector>

#include <corvane/text/CStringW.h>

#include "Console.h"
#include "Options.h"
#include "settings/Settings.h"

/// How a run of the program ends. Each command says in its help what kGood and kWrong mean.
enum ExitStatus : int {
    kGood = 0,
    kWrong = 1,      ///< The command did its work, and what it found is not as it should be.
    kUnusable = 2,   ///< Bad usage, or input or output that cannot be read or written.
    kUndecided = 3,  ///< Nothing was found wrong, but a rule could not judge.
};

/// One command of the program. It declares its options to the parser, which reads them into the
/// command's own fields, and runs when the user chose it.
class Command {
public:
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    bool isChosen() const;
    /// True when nobody watches: no progress is shown.
    virtual bool isBatch() const { return false; }
    /// Does the command's work. Gives the exit status.
    virtual int run(Console& console) = 0;

protected:
    /// `exitStatuses` is the foot of the command's help: what 0 and 1 mean.
    Command(CLI::App& program, const char* name, Message description, Message exitStatuses);
    /// A command that the program starts for itself. Nobody types it, so the help leaves it out.
    Command(CLI::App& program, const char* name);

    CLI::App& parser() { return *parser_; }

private:
    CLI::App* parser_;
};

/// The folders that many commands take in place of the environment's.
struct FolderOptions {
    std::vector<CStringW> modules;
    CStringW data;
    CStringW registry;
    CStringW scripts;
    Settings settings;

    /// A folder that is not there is refused when the command is read, or left to the command,
    /// which can tell more of it.
    enum class Missing { Refused, LeftToCommand };

    void declare(CLI::App& command, Missing missing = Missing::Refused);
    void declareData(CLI::App& command, Missing missing);
    /// Hands settings and registry on to the library, which reads them from the environment. With
    /// `mayMake` false no folder is made that stays.
    void apply(bool mayMake = true);
};
