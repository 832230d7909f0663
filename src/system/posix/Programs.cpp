#include "system/Programs.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "system/Modules.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/Unicode.h"
#include "system/posix/FileOperations.h"
#include "system/posix/Spawn.h"

namespace corvane::system {
namespace {

constexpr char16_t kBetweenFolders = u':';
// Below the install folder.
constexpr std::u16string_view kStarter = u"" CORVANE_STARTER;
// Where an environment without PATH has its programs, as for the system's own look-up.
constexpr std::u16string_view kStandardFolders = u"/bin:/usr/bin";

bool isProgram(std::u16string_view path) {
    const std::string native = nativePath(path);
    struct stat status;
    return native.starts_with('/') && ::stat(native.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && ::access(native.c_str(), X_OK) == 0;
}

// A thread that ended in the middle would leave a child and descriptors.
class NotCancelled {
public:
    NotCancelled() { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
    NotCancelled(const NotCancelled&) = delete;
    NotCancelled& operator=(const NotCancelled&) = delete;
    ~NotCancelled() { ::pthread_setcancelstate(before_, nullptr); }

private:
    int before_ = PTHREAD_CANCEL_ENABLE;
};

// Runs a program to its end: true when it has written something. Its status would be lost where
// the host looks after all children itself.
bool saysSomething(std::vector<std::string> texts) {
    std::vector<char*> arguments(texts.size() + 1);
    std::ranges::transform(texts, arguments.begin(), [](std::string& text) { return text.data(); });
    const NotCancelled undisturbed;
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0) return false;
    const Descriptor answer(pipe[0]);
    Descriptor output(pipe[1]);
    const pid_t process = Spawn(output.get()).start(arguments.data());
    output.close();
    char byte = 0;
    ssize_t count = 0;
    do {
        count = ::read(answer.get(), &byte, 1);
    } while (count < 0 && errno == EINTR);
    while (process > 0 && ::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return count == 1;
}

}  // namespace

std::optional<std::u16string> findProgram(std::u16string_view name) {
    if (name.empty()) return std::nullopt;
    if (lastSeparator(name) != name.npos)
        return isProgram(name) ? std::optional(normalise(name)) : std::nullopt;
    const std::u16string folders =
        environmentVariable(u"PATH").value_or(std::u16string(kStandardFolders));
    for (std::u16string_view rest = folders; !rest.empty();) {
        const std::size_t end = std::min(rest.find(kBetweenFolders), rest.size());
        std::u16string path = join(rest.substr(0, end), name);
        if (end > 0 && isProgram(path)) return path;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return std::nullopt;
}

bool startProgram(std::u16string_view program, std::span<const std::u16string> arguments,
                  std::chrono::milliseconds patience) {
    std::vector<std::string> texts{nativePath(join(installFolder(), kStarter)),
                                   std::to_string(patience.count()), nativePath(program)};
    for (const std::u16string& argument : arguments) {
        if (argument.find(u'\0') != argument.npos) return false;
        texts.push_back(toUtf8(argument));
    }
    return saysSomething(std::move(texts));
}

}  // namespace corvane::system
