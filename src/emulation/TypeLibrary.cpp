#include "emulation/TypeLibrary.h"

#include <memory>

#include "emulation/FileWindow.h"
#include "emulation/ModuleResource.h"
#include "emulation/MsftLibrary.h"
#include "system/Files.h"
#include "system/Paths.h"

namespace corvane::emulation {

using namespace system;

namespace {

constexpr std::u16string_view kResourceType = u"TYPELIB";
constexpr std::uint32_t kMostNumber = 0xFFFF;

// The number of a resource in decimal digits, or nothing.
std::optional<std::uint32_t> resourceNumber(std::u16string_view text) {
    if (text.empty()) return std::nullopt;
    std::uint32_t number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') return std::nullopt;
        number = number * 10 + (unit - u'0');
        if (number > kMostNumber) return std::nullopt;
    }
    return number;
}

std::optional<TypeLibraryAttributes> readResource(const FileWindow& file, std::uint32_t number) {
    const std::optional<FileWindow> resource = findModuleResource(file, kResourceType, number);
    return resource ? readMsftLibrary(*resource) : std::nullopt;
}

}  // namespace

std::optional<TypeLibraryAttributes> readTypeLibrary(std::u16string_view path) {
    constexpr std::uint32_t kFirst = 1;
    if (const std::unique_ptr<InputFile> file = InputFile::open(path)) {
        const FileWindow whole(*file);
        const std::optional<TypeLibraryAttributes> library = readMsftLibrary(whole);
        return library ? library : readResource(whole, kFirst);
    }
    const std::optional<std::uint32_t> number = resourceNumber(fileName(path));
    if (!number) return std::nullopt;
    const std::unique_ptr<InputFile> file = InputFile::open(parentFolder(path));
    return file ? readResource(FileWindow(*file), *number) : std::nullopt;
}

}  // namespace corvane::emulation
