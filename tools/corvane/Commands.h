#pragma once

#include <memory>

#include "Command.h"

// What the program does: each makes a command, declared to the program's parser. The parser must
// outlive it.

std::unique_ptr<Command> makeRunCommand(CLI::App& program);
std::unique_ptr<Command> makeCheckCommand(CLI::App& program);
std::unique_ptr<Command> makeWorkerCommand(CLI::App& program);
std::unique_ptr<Command> makeLintCommand(CLI::App& program);
std::unique_ptr<Command> makeLintWorkerCommand(CLI::App& program);
std::unique_ptr<Command> makeMergeCommand(CLI::App& program);
std::unique_ptr<Command> makeShowCommand(CLI::App& program);
std::unique_ptr<Command> makeSaveCommand(CLI::App& program);
std::unique_ptr<Command> makeUnitCommand(CLI::App& program);
std::unique_ptr<Command> makeDbCommand(CLI::App& program);
std::unique_ptr<Command> makeDoctorCommand(CLI::App& program);
std::unique_ptr<Command> makeConvertCommand(CLI::App& program);
std::unique_ptr<Command> makeDiffCommand(CLI::App& program);
std::unique_ptr<Command> makeCompletionCommand(CLI::App& program);
std::unique_ptr<Command> makeNewCommand(CLI::App& program);
std::unique_ptr<Command> makeRegisterCommand(CLI::App& program);
