// Look-ups in the reference data, beside prepared statements of SQLite on the same file.

#include <array>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <sqlite3.h>
#include <string>

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>
#include <corvane/platform/Environment.h>

namespace {

namespace fs = std::filesystem;

// A new database file, gone with the benchmark.
class DatabaseFolder {
public:
    DatabaseFolder() : folder_(fs::temp_directory_path() / "corvane-bench-database") {
        fs::create_directories(folder_);
        corvane::SetEnvironmentText(u"CORVANE_DATABASE_DIR", (folder_ / "").u16string());
        corvane::SetEnvironmentText(u"CORVANE_DATA_DIR", folder_.u16string());
    }
    DatabaseFolder(const DatabaseFolder&) = delete;
    DatabaseFolder& operator=(const DatabaseFolder&) = delete;
    ~DatabaseFolder() { fs::remove_all(folder_); }

    std::string file() const { return folder_ / "qorSqliteDb.dat"; }

private:
    fs::path folder_;
};

const DatabaseFolder& databaseFolder() {
    static const DatabaseFolder folder;
    return folder;
}

qor_db::IDatabaseCollector& collector() {
    databaseFolder();
    static qor_db::IDatabaseCollector* const made = qor_db::QORDataHelper::getInstance();
    return *made;
}

// Of the order of coarse and fine threads, first and last ones.
constexpr std::array kThreads = {"M6", "M8x1", "M64", "M52x1.5"};
constexpr std::array kWideThreads = {u"M6", u"M8x1", u"M64", u"M52x1.5"};

void thread(benchmark::State& state) {
    qor_db::IReferenceData& reference = collector().reference();
    std::size_t i = 0;
    for (auto _ : state) {
        const auto found = reference.thread(kWideThreads[i++ % kWideThreads.size()]);
        if (!found) {
            state.SkipWithError("not found");
            break;
        }
        benchmark::DoNotOptimize(found->tapDrill);
    }
}

// The same columns of the row, by its primary key.
void threadOfSqlite(benchmark::State& state) {
    collector();
    sqlite3* database = nullptr;
    sqlite3_open_v2(databaseFolder().file().c_str(), &database,
                    SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database,
                       "SELECT designation, series, nominal, pitch, tap_drill, source "
                       "FROM qor_thread WHERE designation = ?",
                       -1, &statement, nullptr);
    std::size_t i = 0;
    for (auto _ : state) {
        sqlite3_bind_text(statement, 1, kThreads[i++ % kThreads.size()], -1, SQLITE_STATIC);
        if (sqlite3_step(statement) != SQLITE_ROW) {
            state.SkipWithError("not found");
            break;
        }
        for (const int column : {0, 1, 5})
            benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
        for (const int column : {2, 3, 4})
            benchmark::DoNotOptimize(sqlite3_column_double(statement, column));
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
}

BENCHMARK(thread)->Name("look-up of a thread:corvane");
BENCHMARK(threadOfSqlite)->Name("look-up of a thread:SQLite");

}  // namespace
