// The time of the processor that whole processes take: the start of `corvane`, beside a program
// that only links libxml2, and a rule of a run of many, beside the script host with the same text.

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "../script/Host.h"

namespace {

namespace fs = std::filesystem;

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Of this process, or of its children that have ended and theirs.
double processorTime(int who) {
    rusage usage{};
    getrusage(who, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Runs a program with its output thrown away. False unless it ends well.
bool run(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    return error == 0 && waitpid(process, &status, 0) == process && status == 0;
}

// The iteration's time is that of the processes, divided by `parts`.
void timeProcesses(benchmark::State& state, const std::vector<std::string>& arguments, int parts) {
    for (auto _ : state) {
        const double start = processorTime(RUSAGE_CHILDREN);
        if (!run(arguments)) {
            state.SkipWithError("failed");
            break;
        }
        state.SetIterationTime((processorTime(RUSAGE_CHILDREN) - start) / parts);
    }
}

// So many script rules in a rule file and in the index, all with one empty script, and no rule
// database. Gone with the benchmark.
class Site {
public:
    explicit Site(int rules)
        : folder_(fs::temp_directory_path() / ("corvane-bench-start-" + std::to_string(rules))) {
        fs::create_directories(folder_ / "Settings");
        std::ofstream(folder_ / "Settings/ConfigModule.ini")
            << "[RULE_SCRIPT_LOCATION]\ndirectory=" << folder_.string() << '\n';
        std::ofstream(folder_ / "empty.lua") << '\n';
        std::ofstream index(folder_ / "UserDefinedFile.xml");
        std::ofstream file(ruleFile());
        index << "<Rules>\n";
        file << "<RuleFile>\n";
        for (int i = 0; i < rules; ++i) {
            index << "<Rule Name=\"Rule " << i << "\" File=\"empty.lua\" Severity=\"2\"/>\n";
            file << "<Rule Name=\"Rule " << i << "\" Severity=\"2\"/>\n";
        }
        index << "</Rules>\n";
        file << "</RuleFile>\n";
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    ~Site() { fs::remove_all(folder_); }

    // For the programs that are started.
    void enter() const {
        setenv("CORVANE_DATA_DIR", folder_.c_str(), 1);
        setenv("CORVANE_DATABASE_DIR", (folder_.string() + '/').c_str(), 1);
    }
    std::string ruleFile() const { return (folder_ / "rules.xml").string(); }

private:
    fs::path folder_;
};

void ruleOfMany(benchmark::State& state) {
    const auto rules = static_cast<int>(state.range(0));
    const Site site(rules);
    site.enter();
    timeProcesses(state, {CORVANE_BENCH_TOOL, "run", site.ruleFile()}, rules);
}

void scriptOfMany(benchmark::State& state) {
    for (auto _ : state) {
        const double start = processorTime(RUSAGE_SELF);
        for (int i = 0; i < state.range(0); ++i) {
            if (runInHost(u" ")) continue;
            state.SkipWithError("failed");
            return;
        }
        const double taken = processorTime(RUSAGE_SELF) - start;
        state.SetIterationTime(taken / static_cast<double>(state.range(0)));
    }
}

void start(benchmark::State& state, const char* program, const char* argument) {
    std::vector<std::string> arguments{program};
    if (argument) arguments.emplace_back(argument);
    timeProcesses(state, arguments, 1);
}

// An iteration is a whole process, whatever part of its time it counts as.
constexpr int kStarts = 20;

void sizesOfRuns(benchmark::internal::Benchmark* rows) {
    for (const int rules : {1'000, 3'000, 10'000, 30'000})
        rows->Arg(rules);
}

BENCHMARK_CAPTURE(start, tool, CORVANE_BENCH_TOOL, "--version")
    ->Name("--version:corvane")
    ->UseManualTime()
    ->Iterations(kStarts);
BENCHMARK_CAPTURE(start, empty, CORVANE_BENCH_EMPTY, nullptr)
    ->Name("--version:empty program with libxml2")
    ->UseManualTime()
    ->Iterations(kStarts);
BENCHMARK(ruleOfMany)
    ->Name("rule of a run:corvane")
    ->Apply(sizesOfRuns)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(scriptOfMany)
    ->Name("rule of a run:script host")
    ->Apply(sizesOfRuns)
    ->UseManualTime()
    ->Iterations(1);

}  // namespace
