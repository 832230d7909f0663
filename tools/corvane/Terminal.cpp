#include "Terminal.h"

#ifdef _WIN32

#include <windows.h>

namespace {

// A console interprets escape sequences and UTF-8 only when asked to.
bool isTerminal(DWORD stream) {
    SetConsoleOutputCP(CP_UTF8);
    const HANDLE handle = GetStdHandle(stream);
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) &&
           SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace

bool outputIsTerminal() {
    return isTerminal(STD_OUTPUT_HANDLE);
}
bool errorIsTerminal() {
    return isTerminal(STD_ERROR_HANDLE);
}
std::size_t errorColumns(std::size_t otherwise) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) return otherwise;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

#else

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

#endif
