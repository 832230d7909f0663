#include "emulation/TypeLibrary.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "emulation/TypeLibraryFile.h"
#include "system/Files.h"
#include "system/Paths.h"

namespace corvane::emulation {

using namespace system;

namespace {

// The header, by byte offset. It is followed by the offsets of the type infos and the directory of
// segments.
constexpr std::uint32_t kMagic = 0x5446534D;
constexpr std::size_t kGuidOffset = 0x08;
constexpr std::size_t kLocale = 0x10;
constexpr std::size_t kFlags = 0x14;
constexpr std::size_t kVersion = 0x18;
constexpr std::size_t kTypeInfoCount = 0x20;
constexpr std::size_t kHeaderSize = 0x54;
constexpr std::uint32_t kHasHelpModule = 0x100;  // one more word before the type infos
constexpr std::uint32_t kNone = 0xFFFFFFFF;

// An entry of the directory: offset, length, an unused word, and a mark that each entry has.
constexpr std::size_t kSegments = 15;
constexpr std::size_t kSegmentSize = 16;
constexpr std::size_t kTypeInfoSegment = 0;
constexpr std::size_t kGuidSegment = 5;
constexpr std::size_t kLengthInSegment = 4;
constexpr std::size_t kMarkInSegment = 12;
constexpr std::uint32_t kMark = 0x0F;

std::uint32_t wordAt(const std::string& bytes, std::size_t offset) {
    return littleEndian<std::uint32_t>(bytes.data() + offset);
}

Guid guidOf(const std::string& bytes) {
    Guid guid{wordAt(bytes, 0),
              littleEndian<std::uint16_t>(bytes.data() + 4),
              littleEndian<std::uint16_t>(bytes.data() + 6),
              {}};
    std::memcpy(guid.data4.data(), bytes.data() + 8, guid.data4.size());
    return guid;
}

std::optional<std::string> readDirectory(const FileWindow& library, const std::string& header) {
    std::uint64_t offset = kHeaderSize;
    if (wordAt(header, kFlags) & kHasHelpModule) offset += sizeof(std::uint32_t);
    offset += std::uint64_t{wordAt(header, kTypeInfoCount)} * sizeof(std::uint32_t);
    std::optional<std::string> directory = library.bytes(offset, kSegments * kSegmentSize);
    if (!directory) return std::nullopt;
    for (const std::size_t segment : {kTypeInfoSegment, kGuidSegment}) {
        if (wordAt(*directory, segment * kSegmentSize + kMarkInSegment) != kMark)
            return std::nullopt;
    }
    return directory;
}

std::optional<Guid> readGuid(const FileWindow& library, const std::string& directory,
                             std::uint32_t offset) {
    if (offset == kNone) return Guid{};
    constexpr std::size_t kEntry = kGuidSegment * kSegmentSize;
    const std::optional<FileWindow> table =
        library.part(wordAt(directory, kEntry), wordAt(directory, kEntry + kLengthInSegment));
    if (!table) return std::nullopt;
    const std::optional<std::string> bytes = table->bytes(offset, sizeof(Guid));
    if (!bytes) return std::nullopt;
    return guidOf(*bytes);
}

}  // namespace

std::optional<TypeLibraryAttributes> readMsftLibrary(const FileWindow& library) {
    const std::optional<std::string> header = library.bytes(0, kHeaderSize);
    if (!header || wordAt(*header, 0) != kMagic) return std::nullopt;
    const std::optional<std::string> directory = readDirectory(library, *header);
    if (!directory) return std::nullopt;
    const std::optional<Guid> guid = readGuid(library, *directory, wordAt(*header, kGuidOffset));
    if (!guid) return std::nullopt;
    const std::uint32_t version = wordAt(*header, kVersion);
    return TypeLibraryAttributes{*guid, static_cast<std::uint16_t>(version & 0xFFFF),
                                 static_cast<std::uint16_t>(version >> 16),
                                 wordAt(*header, kLocale)};
}

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
