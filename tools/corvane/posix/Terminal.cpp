#include "Terminal.h"

#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool isTerminal(int descriptor) {
    const char* kind = std::getenv("TERM");
    return kind && std::string_view(kind) != "dumb" && isatty(descriptor);
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
