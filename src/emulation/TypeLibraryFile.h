#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "emulation/TypeLibrary.h"
#include "system/Files.h"

namespace corvane::emulation {

/// A part of a file that is read piece by piece. Offsets count from its start, numbers are little
/// endian, and what lies outside of it cannot be read. The file must outlive it.
class FileWindow {
public:
    explicit FileWindow(const system::InputFile& file) : file_(&file), size_(file.size()) {}

    /// A part of this one, or nothing when it would reach beyond the end.
    std::optional<FileWindow> part(std::uint64_t offset, std::uint64_t length) const;

    std::optional<std::string> bytes(std::uint64_t offset, std::size_t length) const;
    std::optional<std::uint16_t> number16(std::uint64_t offset) const;
    std::optional<std::uint32_t> number32(std::uint64_t offset) const;

private:
    FileWindow(const system::InputFile* file, std::uint64_t start, std::uint64_t size)
        : file_(file), start_(start), size_(size) {}
    bool contains(std::uint64_t offset, std::uint64_t length) const {
        return offset <= size_ && length <= size_ - offset;
    }
    template <typename Number>
    std::optional<Number> number(std::uint64_t offset) const;

    const system::InputFile* file_;
    std::uint64_t start_ = 0;
    std::uint64_t size_;
};

/// A number that stands in little-endian order in bytes that are known to hold it.
template <typename Number>
Number littleEndian(const char* bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = sizeof(Number); i-- > 0;)
        number = number << 8 | static_cast<std::uint8_t>(bytes[i]);
    return static_cast<Number>(number);
}

/// The bytes of a resource with a named type and a number in a Windows module of 32 or 64 bits, in
/// whatever language comes first; nothing when there is none or the module is damaged.
std::optional<FileWindow> findModuleResource(const FileWindow& module, std::u16string_view type,
                                             std::uint32_t number);

/// The attributes of a type library in the binary MSFT format, or nothing.
std::optional<TypeLibraryAttributes> readMsftLibrary(const FileWindow& library);

}  // namespace corvane::emulation
