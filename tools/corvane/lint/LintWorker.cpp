#include "lint/LintWorker.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <nlohmann/json.hpp>

#include <corvane/platform/ComError.h>
#include <corvane/rules/CQORFrameWrkUtils.h>

#include "language/Messages.h"
#include "lint/LintFile.h"

namespace lint {

namespace {

using Json = nlohmann::json;

/// A module that hangs while it makes a rule is given up after that.
constexpr std::chrono::seconds kPatience{60};
constexpr int kLookMilliseconds = 200;
/// The answer of a worker whose memory ran out.
constexpr const char* kNoMemory = "no memory";

std::string dumped(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json toJson(const std::vector<Problem>& problems) {
    Json list = Json::array();
    for (const Problem& problem : problems)
        list.push_back({problem.code->id, problem.file, problem.place.line, problem.place.column,
                        problem.message, problem.mend});
    return list;
}

std::vector<Problem> problemsFrom(const Json& list) {
    std::vector<Problem> problems;
    for (const Json& one : list) {
        const auto id = one.at(0).get<std::string>();
        const auto code =
            std::ranges::find_if(allCodes(), [&id](const Code* each) { return id == each->id; });
        if (code == allCodes().end()) continue;
        problems.push_back({*code,
                            one.at(1).get<std::string>(),
                            {one.at(2).get<std::int64_t>(), one.at(3).get<std::int64_t>()},
                            one.at(4).get<std::string>(),
                            one.at(5).get<std::string>()});
    }
    return problems;
}

/// The next line of a worker. Nothing when it ended or had to be ended: `fate` tells how.
std::optional<std::string> lineOf(WorkerProcess& worker, std::string& fate) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    const std::uint64_t limit = memoryShare(1);
    std::vector<std::string> lines;
    while (std::chrono::steady_clock::now() < deadline) {
        WorkerProcess* const workers[] = {&worker};
        WorkerProcess::wait(workers, kLookMilliseconds);
        const bool isOpen = worker.receive(lines);
        if (!lines.empty()) return lines.front();
        if (!isOpen) {
            fate = worker.awaitEnd();
            return std::nullopt;
        }
        if (limit > 0 && worker.memory() > limit) {
            fate = trUtf8("it took more than {0} MB of memory", std::to_string(limit >> 20));
            return std::nullopt;
        }
    }
    fate = trUtf8("it took longer than {0} s", std::to_string(kPatience.count()));
    return std::nullopt;
}

}  // namespace

Vocabulary wordsOf(const Severities& severities) {
    Vocabulary words;
    for (const results::Severity& severity : severities.all())
        words.severities.insert(severity.number);
    CStringList categories;
    CQORFrameWrkUtils::GetRuleCategoryStringList(categories);
    for (const CStringW& category : categories)
        words.categories.insert(category.ToUtf8());
    return words;
}

LintProcess::LintProcess(std::vector<std::string> moduleFolders, Vocabulary words)
    : moduleFolders_(std::move(moduleFolders)), words_(std::move(words)) {}

std::vector<Problem> LintProcess::checkFile(const std::string& path) {
    return ask(path);
}

std::vector<Problem> LintProcess::checkIndex() {
    return ask(std::nullopt);
}

std::vector<Problem> LintProcess::ask(const std::optional<std::string>& path) {
    if (!worker_) {
        worker_ = WorkerProcess::start(kLintWorkerCommand);
        if (worker_)
            worker_->send(dumped({{"language", language::current()},
                                  {"modules", moduleFolders_},
                                  {"severities", words_.severities},
                                  {"categories", words_.categories}}));
    }
    std::string fate = trUtf8("no process could be started");
    if (worker_) {
        worker_->send(dumped(path ? Json(*path) : Json()));
        if (const std::optional<std::string> line = lineOf(*worker_, fate)) {
            const Json answer = Json::parse(*line, nullptr, false);
            if (answer.is_array()) return problemsFrom(answer);
            fate = answer == kNoMemory ? trUtf8("the memory ran out")
                                       : trUtf8("its process wrote what is no result");
        }
        worker_.reset();
    }
    Report report(path.value_or("index"));
    report.add(kNoModuleRule, {}, trUtf8("looking at its rules ended the process: {0}", fate),
               trUtf8("Mend the rule module that does this."));
    return report.sorted();
}

int runLintWorker() {
    WorkerChannel channel;
    std::string line;
    if (!channel.read(line)) return 0;
    const Json settings = Json::parse(line);
    const language::Scope scope(settings.at("language").get<language::Language>());

    std::vector<CStringW> folders;
    for (const Json& folder : settings.at("modules"))
        folders.push_back(CStringW::FromUtf8(folder.get<std::string>()));
    Linter linter(folders, {settings.at("severities").get<std::set<std::int64_t>>(),
                            settings.at("categories").get<std::set<std::string>>()});
    while (channel.read(line)) {
        const Json path = Json::parse(line);
        try {
            channel.write(
                dumped(toJson(path.is_null() ? linter.checkIndex() : linter.checkFile(path))));
        } catch (const std::bad_alloc&) {
            channel.write(dumped(kNoMemory));
        } catch (const _com_error& error) {
            if (error.Error() != corvane::kErrorOutOfMemory) throw;
            channel.write(dumped(kNoMemory));
        }
    }
    return 0;
}

}  // namespace lint
