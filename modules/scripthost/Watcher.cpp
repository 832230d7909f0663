#include "Watcher.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>
#include <vector>

#include "HostThread.h"
#include "Limits.h"

namespace scripthost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPeriod{1};
/// To interrupt a deep recursion takes long; no more than this share of the time goes into it.
constexpr int kShare = 20;
/// Periods without a script before the thread sleeps until one comes. To wake it costs more than an
/// empty script does.
constexpr int kIdlePeriods = 200;

struct Watcher {
    std::mutex mutex;
    std::condition_variable change;
    std::vector<Limits*> watched;
    std::thread thread;
    bool isAsleep = false;
    bool isEnding = false;

    ~Watcher() {
        {
            const std::lock_guard lock(mutex);
            isEnding = true;
        }
        change.notify_all();
        if (thread.joinable()) thread.join();
    }

    void work() {
        std::unique_lock lock(mutex);
        int idle = 0;
        while (!isEnding) {
            const Clock::time_point start = Clock::now();
            for (Limits* limits : watched)
                limits->interrupt();
            idle = watched.empty() ? idle + 1 : 0;
            isAsleep = idle > kIdlePeriods;
            if (isAsleep) {
                change.wait(lock, [this] { return isEnding || !watched.empty(); });
                isAsleep = false;
            } else {
                const auto pause =
                    std::max<Clock::duration>(kPeriod, (Clock::now() - start) * kShare);
                change.wait_for(lock, pause, [this] { return isEnding; });
            }
        }
    }
};

/// In place of an object that a child process would have to end: its thread is not there.
alignas(Watcher) unsigned char place[sizeof(Watcher)];
Watcher* const watcher = new (place) Watcher;

/// Ends the thread when the module is unloaded.
struct AtUnload {
    AtUnload() {
        callAfterFork([] { new (place) Watcher; });
    }
    ~AtUnload() { watcher->~Watcher(); }
} atUnload;

}  // namespace

Watch::Watch(Limits& limits) : limits_(limits) {
    const std::lock_guard lock(watcher->mutex);
    if (!watcher->thread.joinable()) watcher->thread = startThread([] { watcher->work(); });
    watcher->watched.push_back(&limits);
    if (watcher->isAsleep) watcher->change.notify_all();
}

Watch::~Watch() {
    const std::lock_guard lock(watcher->mutex);
    std::erase(watcher->watched, &limits_);
}

}  // namespace scripthost
