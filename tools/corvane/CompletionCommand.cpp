#include <CLI/CLI.hpp>
#include <iostream>

#include "Commands.h"

// Completions of shells are made from the tree of commands itself, so that they cannot go stale.

namespace {

/// A command with its place, "db drill"; the program itself has none.
struct Place {
    std::string path;
    const CLI::App* app;
};

void addPlaces(const CLI::App& app, const std::string& path, std::vector<Place>& places) {
    places.push_back({path, &app});
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (!command->get_group().empty())
            addPlaces(*command, path + (path.empty() ? "" : " ") + command->get_name(), places);
}

std::string optionNames(const CLI::Option& option) {
    std::string names;
    for (const std::string& name : option.get_lnames())
        names += (names.empty() ? "--" : " --") + name;
    for (const std::string& name : option.get_snames())
        names += (names.empty() ? "-" : " -") + name;
    return names;
}

/// What a value may be: words, "" for anything, "/" for a folder and "." for a file.
std::string valuesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t open = type.find('{');
    if (open != type.npos) {
        std::string words = type.substr(open + 1, type.find('}', open) - open - 1);
        std::ranges::replace(words, ',', ' ');
        return words;
    }
    if (type.find("DIR") != type.npos) return "/";
    return type.find("FILE") != type.npos ? "." : "";
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

std::vector<const CLI::Option*> namedOptions(const CLI::App& app) {
    std::vector<const CLI::Option*> options;
    for (const CLI::Option* option : app.get_options())
        if (!option->get_positional()) options.push_back(option);
    return options;
}

std::string commandNames(const CLI::App& app) {
    std::string names;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (!command->get_group().empty()) names += command->get_name() + " ";
    return names;
}

/// Both shells find the command of the line in the same way: by the words before the cursor.
void writeWalk(std::ostream& out, const std::vector<Place>& places, const char* words,
               const char* first, const char* end) {
    out << "    local path= i\n    for ((i = " << first << "; i < " << end
        << "; i++)); do\n        case \"$path ${" << words << "[i]}\" in\n            ";
    bool any = false;
    for (const Place& place : places) {
        if (place.path.empty()) continue;
        const std::size_t blank = place.path.rfind(' ');
        const bool isTop = blank == place.path.npos;
        out << (any ? "|" : "") << "'" << (isTop ? "" : place.path.substr(0, blank)) << " "
            << (isTop ? place.path : place.path.substr(blank + 1)) << "'";
        any = true;
    }
    out << ")\n                path=\"${path:+$path }${" << words << "[i]}\" ;;\n        esac\n"
        << "    done\n";
}

void writeBash(std::ostream& out, const std::vector<Place>& places) {
    out << "# Completion of corvane for bash, written by \"corvane completion bash\".\n"
           "_corvane() {\n    local cur=${COMP_WORDS[COMP_CWORD]} "
           "prev=${COMP_WORDS[COMP_CWORD-1]} words=\n    COMPREPLY=()\n";
    writeWalk(out, places, "COMP_WORDS", "1", "COMP_CWORD");
    out << "    case \"$path:$prev\" in\n";
    for (const Place& place : places) {
        for (const CLI::Option* option : namedOptions(*place.app)) {
            if (!takesValue(*option)) continue;
            std::string names = "'" + place.path + ":" + optionNames(*option) + "'";
            for (std::size_t at; (at = names.find(" -")) != names.npos;)
                names.replace(at, 1, "'|'" + place.path + ":");
            const std::string values = valuesOf(*option);
            out << "        " << names << ") ";
            if (values == "/" || values == ".")
                out << "COMPREPLY=($(compgen " << (values == "/" ? "-d" : "-f") << " -- \"$cur\"))";
            else
                out << "COMPREPLY=($(compgen -W '" << values << "' -- \"$cur\"))";
            out << "; return ;;\n";
        }
    }
    out << "    esac\n    case \"$path\" in\n";
    for (const Place& place : places) {
        out << "        '" << place.path << "') words='" << commandNames(*place.app);
        for (const CLI::Option* option : namedOptions(*place.app))
            out << optionNames(*option) << " ";
        out << "' ;;\n";
    }
    out << "    esac\n    COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n"
           "    [[ $cur == -* || ${#COMPREPLY[@]} -gt 0 && -n $cur ]] || "
           "COMPREPLY+=($(compgen -f -- \"$cur\"))\n}\n"
           "complete -o filenames -F _corvane corvane\n";
}

/// A text for between quotes and brackets of zsh.
std::string zshText(const std::string& text) {
    std::string safe;
    for (const char letter : text) {
        if (letter == '\'')
            safe += "'\\''";
        else if (letter == '[' || letter == ']' || letter == ':' || letter == '\\')
            safe += std::string("\\") + letter;
        else
            safe += letter == '\n' ? ' ' : letter;
    }
    return safe;
}

void writeZshOption(std::ostream& out, const CLI::Option& option) {
    std::string action;
    if (takesValue(option)) {
        const std::string values = valuesOf(option);
        action = values == "/"   ? ":folder:_files -/"
                 : values == "." ? ":file:_files"
                                 : ":value:(" + values + ")";
    }
    std::string names = optionNames(option);
    for (std::size_t at = 0; at != names.npos;) {
        const std::size_t end = names.find(' ', at);
        out << " \\\n                '*" << names.substr(at, end - at) << "["
            << zshText(option.get_description()) << "]" << action << "'";
        at = end == names.npos ? end : end + 1;
    }
}

void writeZsh(std::ostream& out, const std::vector<Place>& places) {
    out << "#compdef corvane\n# Completion of corvane for zsh, written by \"corvane completion "
           "zsh\".\n_corvane() {\n";
    writeWalk(out, places, "words", "2", "CURRENT");
    out << "    case \"$path\" in\n";
    for (const Place& place : places) {
        out << "        '" << place.path << "')\n";
        if (!commandNames(*place.app).empty()) {
            out << "            local -a commands=(";
            for (const CLI::App* command : place.app->get_subcommands(nullptr))
                if (!command->get_group().empty())
                    out << "\n                '" << command->get_name() << ":"
                        << zshText(command->get_description()) << "'";
            out << ")\n            _describe command commands\n";
        }
        out << "            _arguments";
        for (const CLI::Option* option : namedOptions(*place.app))
            writeZshOption(out, *option);
        if (commandNames(*place.app).empty()) out << " \\\n                '*:file:_files'";
        out << " ;;\n";
    }
    out << "    esac\n}\n_corvane \"$@\"\n";
}

class CompletionCommand : public Command {
public:
    explicit CompletionCommand(CLI::App& program)
        : Command(program, "completion", "Print what a shell needs to complete commands",
                  "Exit status: 0 it is printed, 2 bad usage."),
          program_(program) {
        addWord(parser(), "SHELL", shell_, trUtf8("bash or zsh")).required().oneOf({"bash", "zsh"});
    }

    int run(Console&) override {
        std::vector<Place> places;
        addPlaces(program_, {}, places);
        if (shell_ == "zsh")
            writeZsh(std::cout, places);
        else
            writeBash(std::cout, places);
        return kGood;
    }

private:
    const CLI::App& program_;
    std::string shell_;
};

}  // namespace

std::unique_ptr<Command> makeCompletionCommand(CLI::App& program) {
    return std::make_unique<CompletionCommand>(program);
}
