// Rules that do to their process what rules of strangers may do, and rules that tell the tests what
// happened.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <list>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>

#include <corvane/RuleModule.h>

namespace {

using corvane::RuleCheck;

/// A rule that is one function.
template <void (*work)(RuleCheck&)>
class WorkRule : public corvane::ModuleRule {
public:
    explicit WorkRule(const corvane::RuleEntry& entry) : ModuleRule(entry, {}) {}

protected:
    void check(RuleCheck& run) const override { work(run); }
};

/// A rule that gives a result of its own after its work.
template <void (*work)(RuleCheck&), QorLong result>
class ResultRule : public WorkRule<work> {
public:
    using WorkRule<work>::WorkRule;

    QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                    QORResultSet*& results) const override {
        WorkRule<work>::Execute(cadSystem, data, results);
        return result;
    }
};

/// Adds a line to the file that the test reads.
void note(const char* what) {
    if (const char* log = std::getenv("CORVANE_TEST_LOG"))
        std::ofstream(log, std::ios::app) << what << ' ' << getpid() << '\n';
}

void crash(RuleCheck&) {
    std::abort();
}
void leave(RuleCheck&) {
    std::exit(0);
}
void kill(RuleCheck&) {
    ::kill(getpid(), SIGKILL);
}
void hang(RuleCheck&) {
    note("hang");
    for (;;)
        std::this_thread::sleep_for(std::chrono::seconds(1));
}
void eat(RuleCheck&) {
    std::list<std::string> all;
    for (;;)
        all.emplace_back(1 << 20, 'x');
}
void chat(RuleCheck&) {
    std::puts("{\"part\":0,\"rule\":0}");
    std::fflush(stdout);
    if (std::getchar() != EOF) std::abort();
}

/// A finding for each line of the part: x, y, z and a message.
void find(RuleCheck& run) {
    note("find");
    std::ifstream part(run.partPath().ToUtf8());
    for (std::string line; std::getline(part, line);) {
        std::istringstream text(line);
        corvane::Finding finding;
        corvane::Point point;
        std::string message;
        text >> point.x >> point.y >> point.z >> message;
        finding.message = CStringW::FromUtf8(message);
        finding.measured = point.x;
        finding.places.push_back({corvane::Place::Kind::Point, {}, {point}, {}});
        run.fail(finding);
    }
}

constexpr corvane::RuleEntry kRules[] = {
    {u"Crash", u"Crashes", u"tests", corvane::MakeModuleRule<WorkRule<crash>>},
    {u"Leave", u"Ends its process", u"tests", corvane::MakeModuleRule<WorkRule<leave>>},
    {u"Kill", u"Is killed", u"tests", corvane::MakeModuleRule<WorkRule<kill>>},
    {u"Hang", u"Never ends", u"tests", corvane::MakeModuleRule<WorkRule<hang>>},
    {u"Eat", u"Takes all memory", u"tests", corvane::MakeModuleRule<WorkRule<eat>>},
    {u"Chat", u"Prints and reads", u"tests", corvane::MakeModuleRule<WorkRule<chat>>},
    {u"Find", u"Finds what the part says", u"tests", corvane::MakeModuleRule<WorkRule<find>>},
    {u"Fail", u"Finds and fails", u"tests", corvane::MakeModuleRule<ResultRule<find, -3>>},
};

}  // namespace

CORVANE_RULE_MODULE(kRules)
