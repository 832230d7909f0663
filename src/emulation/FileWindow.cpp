#include "emulation/FileWindow.h"

#include <array>

namespace corvane::emulation {

using namespace system;

std::optional<FileWindow> FileWindow::part(std::uint64_t offset, std::uint64_t length) const {
    if (!contains(offset, length)) return std::nullopt;
    return FileWindow(file_, start_ + offset, length);
}

std::optional<std::string> FileWindow::bytes(std::uint64_t offset, std::size_t length) const {
    if (!contains(offset, length)) return std::nullopt;
    std::string bytes(length, '\0');
    if (!file_->read(start_ + offset, bytes)) return std::nullopt;
    return bytes;
}

template <typename Number>
std::optional<Number> FileWindow::number(std::uint64_t offset) const {
    std::array<char, sizeof(Number)> bytes;
    if (!contains(offset, bytes.size()) || !file_->read(start_ + offset, bytes))
        return std::nullopt;
    return littleEndian<Number>(bytes.data());
}

std::optional<std::uint16_t> FileWindow::number16(std::uint64_t offset) const {
    return number<std::uint16_t>(offset);
}

std::optional<std::uint32_t> FileWindow::number32(std::uint64_t offset) const {
    return number<std::uint32_t>(offset);
}

}  // namespace corvane::emulation
