#include "Terminal.h"

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
