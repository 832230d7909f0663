#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

// Processes of a run. A worker is this program once more: what a rule does to its process, it does
// to a worker alone.

/// A worker as the controller holds it. Both write lines to each other.
class WorkerProcess {
public:
    WorkerProcess() = default;
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;
    /// Ends the worker, and what it started.
    virtual ~WorkerProcess() = default;

    /// Starts `corvane COMMAND`. Null when the system refuses.
    static std::unique_ptr<WorkerProcess> start(const std::string& command);

    /// A worker that is gone takes nothing; receive tells that.
    virtual void send(const std::string& line) = 0;
    /// Appends the whole lines that have come. False once the worker has closed its end.
    virtual bool receive(std::vector<std::string>& lines) = 0;
    /// Awaits the end of one that has closed its side, or ends it. Says how it ended, as "exit
    /// status 3" or "signal 11, Segmentation fault".
    virtual std::string awaitEnd() = 0;
    /// Bytes of memory that it holds now; 0 when the system does not tell.
    virtual std::uint64_t memory() const = 0;

    /// Waits until one of the workers has something, the time is over or wasInterrupted changes.
    static void wait(std::span<WorkerProcess* const> workers, int milliseconds);
};

/// The worker's own end.
class WorkerChannel {
public:
    /// Takes standard input for itself, through which both sides write: a rule that reads or prints
    /// must not get between the lines. The process ends with its controller from now on, and leaves
    /// interruptions to it.
    WorkerChannel();
    WorkerChannel(const WorkerChannel&) = delete;
    WorkerChannel& operator=(const WorkerChannel&) = delete;
    ~WorkerChannel();

    /// False at the end.
    bool read(std::string& line);
    /// Lines that are joined by line ends go out in one piece.
    void write(const std::string& line);

private:
    struct Streams;
    std::unique_ptr<Streams> streams_;
};

/// Bytes of memory of this machine; 0 when the system does not tell.
std::uint64_t machineMemory();

/// Bytes that each of so many workers may take: together the larger part of the machine's, since
/// the system's own guard would end whom it likes. 0 for no limit.
inline std::uint64_t memoryShare(unsigned workers) {
    constexpr std::uint64_t kShare = 5;
    return machineMemory() / kShare * (kShare - 1) / workers;
}
