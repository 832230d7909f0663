#pragma once

#include <functional>
#include <string>
#include <vector>

#include <corvane/text/CStringW.h>

#include "language/Messages.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

// How commands declare what they take. Few files include the library behind it: each that does sets
// up objects of its own at every start of the program.

/// An option or argument that a command has declared. The parser owns it and outlives the command.
class Option {
public:
    explicit Option(CLI::Option* option) : option_(option) {}

    Option& required();
    /// What stands for the value in the help.
    Option& typeName(const std::string& name);
    /// Takes one value each time that it is given, however many it may have together.
    Option& oneEach();
    /// Refuses values for which `fault` gives a text.
    Option& check(const std::function<std::string(const std::string&)>& fault);
    /// Refuses other words. The help lists them, unless the description does.
    Option& oneOf(const std::vector<std::string>& words, bool listed = true);
    Option& within(double least, double most);
    Option& positive();
    Option& excludes(const Option& other);

private:
    CLI::Option* option_;
};

/// A command below the program or below another command, with its help.
CLI::App* addCommand(CLI::App& parent, const std::string& name, Message description);
/// One of the commands below has to be given, or with `optional` at most one.
void takeCommand(CLI::App& parent, bool optional = false);
/// What is done as soon as the command is read.
void onRead(CLI::App& command, std::function<void()> action);
/// Options that the command does not know may be those of its parent.
void takeParentsOptions(CLI::App& command);

// Options and arguments whose text goes to the target. What is not UTF-8 is refused.
Option addText(CLI::App& command, const std::string& name, CStringW& target, Message description);
Option addTexts(CLI::App& command, const std::string& name, std::vector<CStringW>& targets,
                Message description);
// The same for bytes as they are, with a description in the user's language.
Option addWord(CLI::App& command, const std::string& name, std::string& target,
               const std::string& description);
Option addWord(CLI::App& command, const std::string& name,
               const std::function<void(const std::string&)>& take, const std::string& description);
Option addWords(CLI::App& command, const std::string& name, std::vector<std::string>& targets,
                const std::string& description);
Option addFlag(CLI::App& command, const std::string& name, bool& target,
               const std::string& description);
/// `Number` is int, unsigned, std::uint64_t or double.
template <typename Number>
Option addNumber(CLI::App& command, const std::string& name, Number& target,
                 const std::string& description);
