// What becomes of operations when memory runs out: at every allocation in turn.

#include <atomic>
#include <cstdlib>
#include <new>

#include "database/CollectorTest.h"

namespace {

// How many allocations still succeed; below 0 it is all of them.
std::atomic<int> left{-1};

void* allocate(std::size_t size) {
    if (left >= 0 && left-- == 0) {
        left = 0;
        return nullptr;
    }
    return std::malloc(size ? size : 1);
}

}  // namespace

// Out of line, or the compiler takes the pair of malloc and free apart and sees a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

// Runs an operation with ever more memory until there is enough.
template <typename Operation>
void expectOnlyOutOfMemory(const char* name, const Operation& operation, int step = 1) {
    int allocations = 0;
    for (Status status{ErrorCode::OutOfMemory, {}, 0}; !status.ok(); allocations += step) {
        left = allocations;
        status = operation();
        left = -1;
        if (!status.ok()) {
            ASSERT_EQ(status.code, ErrorCode::OutOfMemory)
                << name << ", " << allocations << ": " << status.message.ToUtf8();
        }
    }
    EXPECT_GT(allocations, step) << name;
}

TEST(Memory, RunsOutWithAStatusAndNothingElse) {
    const TemporaryFolder folder;
    const CollectorScope collector(folder.wide("rules.dat"));
    IReferenceData& reference = collector.reference();
    expectOnlyOutOfMemory("open", [&] { return collector->open(); });
    expectOnlyOutOfMemory("lookup", [&] {
        return reference.bendRadius(u"S355JR", 4, BendDirection::Across).status();
    });
    expectOnlyOutOfMemory("list", [&] { return reference.materials().status(); });
    expectOnlyOutOfMemory("query", [&] { return collector->prepare(u"SELECT 1").status(); });
    // Tables of a server are made by this call alone; each attempt takes up what the former left.
    openDatabase(kSqliteDriver, folder.wide("server.dat"));
    const CollectorScope server(MSSQLConnectorData(kSqliteDriver, folder.wide("server.dat")));
    expectOnlyOutOfMemory(
        "install", [&] { return server->installSchema(); }, 53);
    EXPECT_THAT(server.reference().thread(u"M6").status(), IsOk());
}

}  // namespace
