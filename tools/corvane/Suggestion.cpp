#include "Suggestion.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "language/Messages.h"
#include "lint/Report.h"

namespace {

bool isHidden(const CLI::App& app) {
    return app.get_group().empty();
}

std::vector<std::string> commandsOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (!isHidden(*command)) names.push_back(command->get_name());
    return names;
}

std::vector<std::string> optionsOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

std::string sentence(const std::string& word, const std::vector<std::string>& known) {
    const std::string meant = lint::nearest(word, known);
    return meant.empty() ? meant : trUtf8("Did you mean \"{0}\"?", meant);
}

}  // namespace

std::string suggestionFor(const CLI::App& program, int argc, const char* const* argv) {
    const CLI::App* app = &program;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--") break;
        if (word.starts_with("--")) {
            const std::string name = word.substr(0, word.find('='));
            if (!app->get_option_no_throw(name)) return sentence(name, optionsOf(*app));
        } else if (!word.starts_with('-') && !commandsOf(*app).empty()) {
            const auto commands = app->get_subcommands(
                [&word](const CLI::App* command) { return command->get_name() == word; });
            if (commands.empty()) return sentence(word, commandsOf(*app));
            app = commands.front();
        }
    }
    return {};
}
