#include "system/posix/ModuleFile.h"

#include <algorithm>
#include <cstring>
#include <link.h>
#include <memory>
#include <span>
#include <vector>

#include "system/Files.h"
#include "system/Unicode.h"

namespace corvane::system {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

template <typename Object>
std::span<char> bytesOf(Object* objects, std::size_t count = 1) {
    return {reinterpret_cast<char*>(objects), count * sizeof(Object)};
}

// True when the loader would go on to the program headers.
bool isForThisProcess(const Header& header) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == kOwnClass && header.e_phentsize == sizeof(Segment);
}

}  // namespace

std::optional<std::string> moduleFileFault(const std::string& path) {
    const std::unique_ptr<InputFile> file = InputFile::open(fromUtf8(path));
    if (!file) return path + ": no regular file, or not readable";
    Header header;
    if (!file->read(0, bytesOf(&header))) return path + ": too short for a module";
    if (!isForThisProcess(header)) return std::nullopt;
    std::vector<Segment> segments(header.e_phnum);
    if (!file->read(header.e_phoff, bytesOf(segments.data(), segments.size())))
        return path + ": cut off, its program headers are missing";
    const std::uint64_t size = file->size();
    const auto isOutside = [size](const Segment& segment) {
        return segment.p_type == PT_LOAD && segment.p_filesz > 0 &&
               (segment.p_offset > size || segment.p_filesz > size - segment.p_offset);
    };
    if (std::ranges::any_of(segments, isOutside))
        return path + ": cut off, shorter than its program headers say";
    return std::nullopt;
}

}  // namespace corvane::system
