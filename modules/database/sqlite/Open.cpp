#include "Open.h"

#include "DatabaseFile.h"
#include "common/Guard.h"

namespace qor_db::sqlite {
namespace {

/// Up to this size every page of a file is checked when it is opened, which takes milliseconds.
constexpr std::int64_t kCheckedBytes = std::int64_t{4} << 20;

// A file that shrinks under a memory map would end the process. The pages that a transaction has
// changed stay in memory until it commits, unless they take more than these KiB: writing them
// earlier needs a lock that keeps readers out until the transaction ends.
constexpr const char* kSettings =
    "PRAGMA cell_size_check=ON; PRAGMA mmap_size=0; PRAGMA cache_spill=-262144";

/// The longest value and row. A schema of a few bytes can make one of any length.
constexpr int kLongestValue = 1 << 27;

// The schema of a file is its maker's program: it gets no functions with side effects, cannot
// write what the database keeps its own books in, and a page that lies is found when it is read.
void harden(sqlite3* handle) {
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kLongestValue);
    // A column's name with a slip in it is a fault, not a text.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
}

Outcome<std::shared_ptr<Database>> openFile(const std::string& name, int flags,
                                            const OpenRequest& request) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (!handle) throw std::bad_alloc();
    // Memory may run out while the object is made that closes the handle from then on.
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> owned(handle, sqlite3_close_v2);
    auto database = std::make_shared<Database>(handle, request);
    static_cast<void>(owned.release());
    if (result != SQLITE_OK) return database->fault(result);
    harden(handle);
    Status status = database->run(kSettings);
    if (!status.ok()) return status;
    return database;
}

// Reads the header and the whole schema, which finds a file that is cut short too.
Status probe(const Database& database) {
    return database.number("SELECT count(*) FROM sqlite_schema").status();
}

Status checkPages(const Database& database) {
    const Outcome<std::int64_t> pages = database.number("PRAGMA page_count");
    const Outcome<std::int64_t> bytes = database.number("PRAGMA page_size");
    if (!pages || !bytes || *pages * *bytes > kCheckedBytes) return {};
    // The rows may break the rules of their maker, whose functions may not be here.
    Status status = database.run("PRAGMA ignore_check_constraints=ON");
    const Outcome<std::int64_t> sound =
        database.number("SELECT count(*) FROM pragma_quick_check(1) WHERE quick_check='ok'");
    if (status.ok()) status = database.run("PRAGMA ignore_check_constraints=OFF");
    if (!sound) return sound.status();
    if (*sound == 1) return status;
    return faultOf(SQLITE_CORRUPT, u"The pages of the database file contradict each other.");
}

}  // namespace

Outcome<std::shared_ptr<Database>> openDatabase(const OpenRequest& request) {
    const Outcome<DatabaseFile> file = findDatabaseFile(request);
    if (!file) return file.status();
    const int create = file->exists ? 0 : SQLITE_OPEN_CREATE;
    Outcome<std::shared_ptr<Database>> database =
        openFile(file->path, SQLITE_OPEN_READWRITE | create, request);
    if (!database) return database;
    Status status = probe(**database);
    if (status.code == ErrorCode::CannotOpen || status.code == ErrorCode::ReadOnly) {
        // A file whose mode wants a log beside it, where none can be made.
        if (file->hasJournal())
            return driver::failure(ErrorCode::CannotOpen,
                                   u"Changes stand in a journal beside the database file, which "
                                   u"only a user who may write there can take up.",
                                   status.nativeCode);
        database =
            openFile(file->uri("?immutable=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, request);
        if (!database) return database;
        status = probe(**database);
    }
    if (status.ok()) status = checkPages(**database);
    if (!status.ok()) return status;
    (*database)->guardStatements();
    return database;
}

}  // namespace qor_db::sqlite
