#include "run/WorkerProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Writes all of it; false when nobody reads any more. Raises no signal.
bool sendAll(int socket, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Collects what comes in pieces to lines.
class LineBuffer {
public:
    void add(std::string_view text, std::vector<std::string>& lines) {
        for (std::size_t end; (end = text.find('\n')) != text.npos; text.remove_prefix(end + 1)) {
            rest_ += text.substr(0, end);
            lines.push_back(std::move(rest_));
            rest_.clear();
        }
        rest_ += text;
    }

private:
    std::string rest_;
};

std::string endText(int status, bool byItself) {
    if (!WIFSIGNALED(status)) return "exit status " + std::to_string(WEXITSTATUS(status));
    const int number = WTERMSIG(status);
    const std::string text = "signal " + std::to_string(number) + ", " + strsignal(number);
    // Nobody else but the system's guard of its memory sends this one unasked.
    return byItself && number == SIGKILL ? text + ", as when the machine's memory runs out" : text;
}

class PosixWorker : public WorkerProcess {
public:
    PosixWorker(pid_t process, int socket) : process_(process), socket_(socket) {}
    ~PosixWorker() override {
        end();
        close(socket_);
    }

    int socket() const { return socket_; }

    void send(const std::string& line) override { sendAll(socket_, line + '\n'); }

    bool receive(std::vector<std::string>& lines) override {
        // Asked before the reading, so that nothing that it wrote is missed. What the worker has
        // started may hold the socket open for longer than the worker lives.
        const bool gone = hasEnded();
        std::array<char, 65536> block;
        for (;;) {
            const ssize_t count = recv(socket_, block.data(), block.size(), MSG_DONTWAIT);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return (errno == EAGAIN || errno == EWOULDBLOCK) && !gone;
            if (count == 0) return false;
            buffer_.add({block.data(), static_cast<std::size_t>(count)}, lines);
        }
    }

    std::string awaitEnd() override {
        for (int i = 0; i < kPatience && !hasEnded(); ++i)
            usleep(1000);
        const bool byItself = hasEnded();
        return endText(end(), byItself);
    }

    std::uint64_t memory() const override {
        std::ifstream file("/proc/" + std::to_string(process_) + "/statm");
        std::uint64_t all = 0;
        std::uint64_t resident = 0;
        file >> all >> resident;
        return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    }

private:
    static constexpr int kPatience = 1000;  ///< Milliseconds.

    /// Ends what is left of its group; gives the status of the worker.
    int end() {
        int status = 0;
        if (process_ <= 0) return status;
        kill(-process_, SIGKILL);
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = 0;
        return status;
    }

    bool hasEnded() const {
        siginfo_t info{};
        return waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT) ==
                   0 &&
               info.si_pid == process_;
    }

    pid_t process_;
    int socket_;
    LineBuffer buffer_;
};

/// Starts this program with the socket as its standard input; 0 when the system refuses.
pid_t spawn(const std::string& command, int socket) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A group of its own, so that what a rule has started ends with the worker.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    std::string program = "corvane";
    std::string argument = command;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t process = 0;
    const int error =
        posix_spawn(&process, "/proc/self/exe", &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? process : 0;
}

}  // namespace

std::unique_ptr<WorkerProcess> WorkerProcess::start(const std::string& command) {
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) return nullptr;
    const pid_t process = spawn(command, sockets[1]);
    close(sockets[1]);
    if (process > 0) return std::make_unique<PosixWorker>(process, sockets[0]);
    close(sockets[0]);
    return nullptr;
}

void WorkerProcess::wait(std::span<WorkerProcess* const> workers, int milliseconds) {
    std::vector<pollfd> sockets;
    for (const WorkerProcess* worker : workers)
        sockets.push_back({static_cast<const PosixWorker*>(worker)->socket(), POLLIN, 0});
    poll(sockets.data(), sockets.size(), milliseconds);
}

struct WorkerChannel::Streams {
    int socket = -1;
    LineBuffer buffer;
    std::vector<std::string> lines;
    std::size_t next = 0;
};

WorkerChannel::WorkerChannel() : streams_(std::make_unique<Streams>()) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int number : {SIGHUP, SIGINT, SIGTERM})
        std::signal(number, SIG_IGN);
    streams_->socket = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
}

WorkerChannel::~WorkerChannel() {
    close(streams_->socket);
}

bool WorkerChannel::read(std::string& line) {
    std::array<char, 65536> block;
    while (streams_->next == streams_->lines.size()) {
        streams_->lines.clear();
        streams_->next = 0;
        const ssize_t count = recv(streams_->socket, block.data(), block.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        streams_->buffer.add({block.data(), static_cast<std::size_t>(count)}, streams_->lines);
    }
    line = std::move(streams_->lines[streams_->next++]);
    return true;
}

void WorkerChannel::write(const std::string& line) {
    // Without its controller a worker has nothing left to do.
    if (!sendAll(streams_->socket, line + '\n')) _exit(1);
}

std::uint64_t machineMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    return pages > 0 ? static_cast<std::uint64_t>(pages) *
                           static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))
                     : 0;
}
