// One script rule with an empty script, beside the script host alone with the same text.

#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include <corvane/app/BatchMode.h>
#include <corvane/platform/Environment.h>
#include <corvane/scriptrules/ConcreteQORRule.h>

#include "Host.h"

namespace {

namespace fs = std::filesystem;

// An empty script in the script folder of a data folder, gone with the benchmark.
class Site {
public:
    Site() : folder_(fs::temp_directory_path() / "corvane-bench-script") {
        fs::create_directories(folder_ / "Settings");
        fs::create_directories(folder_ / "scripts");
        std::ofstream(folder_ / "scripts/empty.lua") << '\n';
        std::ofstream(folder_ / "Settings/ConfigModule.ini")
            << "[RULE_SCRIPT_LOCATION]\ndirectory=" << (folder_ / "scripts").string() << '\n';
        corvane::SetEnvironmentText(u"CORVANE_DATA_DIR", folder_.u16string());
        SetBatchModeStatus(true);
        // What a file written right now says is not kept by its times alone: it may change again
        // within one tick of the file system's clock.
        std::this_thread::sleep_for(std::chrono::seconds(4));
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    ~Site() { fs::remove_all(folder_); }

private:
    fs::path folder_;
};

void emptyRule(benchmark::State& state) {
    static const Site site;
    ConcreteQORRule rule;
    rule.m_csRuleFileName = u"empty.lua";
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    for (auto _ : state) {
        if (rule.Execute(nullptr, data, results) == 0) continue;
        state.SkipWithError("failed");
        break;
    }
}

void emptyScript(benchmark::State& state) {
    for (auto _ : state) {
        if (runInHost(u" ")) continue;
        state.SkipWithError("failed");
        break;
    }
}

BENCHMARK(emptyRule)->Name("empty rule:corvane");
BENCHMARK(emptyScript)->Name("empty rule:script host");

}  // namespace
