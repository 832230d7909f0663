#include <algorithm>
#include <iostream>
#include <sstream>

#include <corvane/app/Installation.h>

#include "Commands.h"
#include "lint/LintFile.h"
#include "lint/LintWorker.h"
#include "lint/LintWriter.h"
#include "run/Severities.h"

namespace {

struct LintOptions {
    std::vector<CStringW> files;
    std::string format = "text";
    std::string severities;
    std::vector<std::string> off;
    FolderOptions folders;
};

bool isOff(const LintOptions& options, const lint::Code& code) {
    return std::ranges::any_of(options.off, [&code](const std::string& name) {
        return name == code.id || name == code.name;
    });
}

class LintCommand : public Command {
public:
    explicit LintCommand(CLI::App& program)
        : Command(
              program, "lint", "Look for what rule files say in vain",
              "Exit status: 0 nothing was found, 1 something was, 2 bad usage.\n"
              "Without a file, the index of user-defined rules and the settings are looked at.") {
        addTexts(parser(), "RULEFILE", options_.files, "Rule files");
        addWord(parser(), "--format", options_.format, trUtf8("How to print: text, json or sarif"))
            .oneOf({"text", "json", "sarif"});
        addWords(parser(), "--off", options_.off,
                 trUtf8("Codes, by number or name, that are not looked for"))
            .typeName("CODE");
        addWord(parser(), "--severities", options_.severities,
                trUtf8("Names of severities, else Settings/Severities.toml of the data folder"))
            .typeName("FILE");
        options_.folders.declare(parser());
    }

    int run(Console& console) override {
        options_.folders.apply();
        const std::optional<Severities> severities = findSeverities(options_.severities, console);
        if (!severities) return kUnusable;
        // What programs read is the same in every language.
        std::optional<language::Scope> english;
        if (options_.format != "text") english.emplace(language::Language::English);
        const std::vector<lint::Problem> problems = find(lint::wordsOf(*severities));
        print(console, problems);
        return problems.empty() ? kGood : kWrong;
    }

private:
    std::vector<lint::Problem> find(lint::Vocabulary words) {
        std::vector<std::string> folders;
        for (const CStringW& folder : options_.folders.modules)
            folders.push_back(folder.ToUtf8());
        lint::LintProcess linter(std::move(folders), std::move(words));
        std::vector<lint::Problem> all = lint::Linter::checkSettings();
        const auto take = [this, &all](const std::vector<lint::Problem>& some) {
            std::ranges::copy_if(
                some, std::back_inserter(all),
                [this](const lint::Problem& problem) { return !isOff(options_, *problem.code); });
        };
        if (options_.files.empty()) take(linter.checkIndex());
        for (const CStringW& file : options_.files)
            take(linter.checkFile(std::filesystem::path(file.Std()).string()));
        return all;
    }

    void print(Console& console, const std::vector<lint::Problem>& problems) const {
        std::ostringstream text;
        if (options_.format == "json")
            lint::writeJson(text, problems);
        else if (options_.format == "sarif")
            lint::writeSarif(
                text, problems,
                std::filesystem::path(corvane::GetInstallation().version.Std()).string());
        else
            lint::writeText(text, problems);
        std::istringstream lines(text.str());
        for (std::string line; std::getline(lines, line);)
            console.writeLine(CStringW(line.c_str()).Std());
        if (options_.format != "text") return;
        const auto count = [&problems](bool isError) {
            return std::ranges::count(problems, isError,
                                      [](const lint::Problem& one) { return one.code->isError; });
        };
        if (problems.empty()) return console.writeLine(tr("nothing found"), Tone::Good);
        console.writeLine(trCount({"{0} error", "{0} errors"}, count(true)) + tr(", ") +
                              trCount({"{0} warning", "{0} warnings"}, count(false)),
                          Tone::Bad);
    }

    LintOptions options_;
};

/// What a look at compiled rules starts for itself.
class LintWorkerCommand : public Command {
public:
    explicit LintWorkerCommand(CLI::App& program) : Command(program, lint::kLintWorkerCommand) {}

    bool isBatch() const override { return true; }
    int run(Console&) override { return lint::runLintWorker(); }
};

}  // namespace

std::unique_ptr<Command> makeLintWorkerCommand(CLI::App& program) {
    return std::make_unique<LintWorkerCommand>(program);
}

std::unique_ptr<Command> makeLintCommand(CLI::App& program) {
    return std::make_unique<LintCommand>(program);
}
