// One message, the execution log off, filtered and on, and a line of the run log, beside spdlog
// with a flush for each message and beside a bare write of the same bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

#include <corvane/dfx/Logger.h>
#include <corvane/logging/CCorvaneLog.h>

#ifdef CORVANE_BENCH_SPDLOG
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#endif

namespace {

constexpr const char16_t* kMessage = u"rule 'Minimum wall' measured 1.2 mm at face 4711\n";
constexpr std::string_view kBytes = "rule 'Minimum wall' measured 1.2 mm at face 4711\n";
constexpr const char16_t* kRunMessage = u"rule 'Minimum wall' measured 1.2 mm at face 4711";
constexpr std::string_view kLine =
    "[14:27:29] [LoggingBench.cpp:72] rule 'Minimum wall' measured 1.2 mm at face 4711\n";

// A file that is gone with the benchmark.
class Target {
public:
    Target() : path_(std::filesystem::temp_directory_path() / "corvane-bench.log") {}
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    ~Target() { std::filesystem::remove(path_); }

    std::string path() const { return path_.string(); }
    std::u16string wide() const { return path_.u16string(); }

private:
    std::filesystem::path path_;
};

// The process's logger, which the environment settles: run with QOR_EXECUTION_LOG set to a file it
// is on, without it off.
void message(benchmark::State& state) {
    dfx::Logger& logger = dfx::Logger::instance();
    logger.setLevel(dfx::ILogSink::LOGLEVEL_INFO);
    for (auto _ : state) {
        logger.info(kMessage);
        benchmark::ClobberMemory();
    }
}

void filteredMessage(benchmark::State& state) {
    dfx::Logger& logger = dfx::Logger::instance();
    logger.setLevel(dfx::ILogSink::LOGLEVEL_ERROR);
    for (auto _ : state) {
        logger.info(kMessage);
        benchmark::ClobberMemory();
    }
}

void runLogLine(benchmark::State& state) {
    const Target target;
    CCorvaneLog::OpenLogFile(target.wide());
    for (auto _ : state)
        CCorvaneLog::PrintMessage(kRunMessage, __FILE__, __LINE__);
    CCorvaneLog::CloseLogFile();
}

void bareWrite(benchmark::State& state, std::string_view bytes) {
    const Target target;
    const int file = ::open(target.path().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    for (auto _ : state) {
        if (::write(file, bytes.data(), bytes.size()) < 0) state.SkipWithError("write");
    }
    ::close(file);
}

#ifdef CORVANE_BENCH_SPDLOG

template <bool passes>
void logPeer(benchmark::State& state) {
    const Target target;
    const auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(target.path(), true);
    sink->set_pattern("%l\t\t: %v");
    spdlog::logger logger("bench", sink);
    logger.set_level(passes ? spdlog::level::info : spdlog::level::err);
    logger.flush_on(spdlog::level::trace);
    for (auto _ : state)
        logger.info(kBytes);
}

BENCHMARK(logPeer<false>)->Name("filtered message:spdlog");
BENCHMARK(logPeer<true>)->Name("message:spdlog");

#endif

BENCHMARK(message)->Name("message:corvane");
BENCHMARK(filteredMessage)->Name("filtered message:corvane");
BENCHMARK(runLogLine)->Name("line of a run:corvane");
BENCHMARK_CAPTURE(bareWrite, message, kBytes)->Name("message:write");
BENCHMARK_CAPTURE(bareWrite, line, kLine)->Name("line of a run:write");

}  // namespace
