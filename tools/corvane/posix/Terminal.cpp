#include "Terminal.h"

#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

#include <corvane/platform/Environment.h>

namespace {

bool isTerminal(int descriptor) {
    const std::u16string kind = corvane::GetEnvironmentText(u"TERM");
    return !kind.empty() && kind != u"dumb" && isatty(descriptor);
}

}  // namespace

bool outputIsTerminal() {
    return isTerminal(STDOUT_FILENO);
}
bool errorIsTerminal() {
    return isTerminal(STDERR_FILENO);
}
std::size_t errorColumns(std::size_t otherwise) {
    winsize size{};
    const bool told = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return told ? size.ws_col : otherwise;
}
