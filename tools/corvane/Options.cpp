#include "Options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "Text.h"

namespace {

/// Another text would name another file, or none.
std::string faultOfText(const std::string& text) {
    return isUtf8(text)
               ? std::string()
               : trUtf8("{0} is not UTF-8; the names of rule files, scripts and parts must be",
                        text);
}

}  // namespace

Option& Option::required() {
    option_->required();
    return *this;
}

Option& Option::typeName(const std::string& name) {
    option_->type_name(name);
    return *this;
}

Option& Option::oneEach() {
    option_->allow_extra_args(false);
    return *this;
}

Option& Option::check(const std::function<std::string(const std::string&)>& fault) {
    option_->check(fault);
    return *this;
}

Option& Option::oneOf(const std::vector<std::string>& words, bool listed) {
    CLI::Validator member = CLI::IsMember(words);
    option_->check(listed ? member : member.description(""));
    return *this;
}

Option& Option::within(double least, double most) {
    option_->check(CLI::Range(least, most));
    // What is no number is on neither side of the range.
    option_->check([](const std::string& text) {
        return std::isnan(std::strtod(text.c_str(), nullptr))
                   ? trUtf8("Could not convert: {0}", text)
                   : std::string();
    });
    return *this;
}

Option& Option::positive() {
    option_->check(CLI::PositiveNumber);
    return *this;
}

Option& Option::excludes(const Option& other) {
    option_->excludes(other.option_);
    return *this;
}

CLI::App* addCommand(CLI::App& parent, const std::string& name, Message description) {
    CLI::App* command = parent.add_subcommand(name, trUtf8(description));
    command->group(trUtf8("Subcommands"));
    // The parser makes this option before it takes over what holds for the options of the parent.
    command->get_help_ptr()->group(trUtf8("Options"));
    return command;
}

void takeCommand(CLI::App& parent, bool optional) {
    if (optional)
        parent.require_subcommand(0, 1);
    else
        parent.require_subcommand(1);
}

void onRead(CLI::App& command, std::function<void()> action) {
    command.callback(std::move(action));
}

void takeParentsOptions(CLI::App& command) {
    command.fallthrough();
}

Option addText(CLI::App& command, const std::string& name, CStringW& target, Message description) {
    return addWord(
               command, name,
               [&target](const std::string& text) { target = CStringW(text.c_str()); },
               trUtf8(description))
        .check(faultOfText);
}

Option addTexts(CLI::App& command, const std::string& name, std::vector<CStringW>& targets,
                Message description) {
    return Option(command.add_option_function<std::vector<std::string>>(
                      name,
                      [&targets](const std::vector<std::string>& texts) {
                          targets.clear();
                          for (const std::string& text : texts)
                              targets.emplace_back(text.c_str());
                      },
                      trUtf8(description)))
        .check(faultOfText);
}

Option addWord(CLI::App& command, const std::string& name, std::string& target,
               const std::string& description) {
    return Option(command.add_option(name, target, description));
}

Option addWord(CLI::App& command, const std::string& name,
               const std::function<void(const std::string&)>& take,
               const std::string& description) {
    return Option(command.add_option_function<std::string>(name, take, description));
}

Option addWords(CLI::App& command, const std::string& name, std::vector<std::string>& targets,
                const std::string& description) {
    return Option(command.add_option(name, targets, description));
}

Option addFlag(CLI::App& command, const std::string& name, bool& target,
               const std::string& description) {
    return Option(command.add_flag(name, target, description));
}

template <typename Number>
Option addNumber(CLI::App& command, const std::string& name, Number& target,
                 const std::string& description) {
    return Option(command.add_option(name, target, description));
}

template Option addNumber(CLI::App&, const std::string&, int&, const std::string&);
template Option addNumber(CLI::App&, const std::string&, unsigned&, const std::string&);
template Option addNumber(CLI::App&, const std::string&, std::uint64_t&, const std::string&);
template Option addNumber(CLI::App&, const std::string&, double&, const std::string&);
