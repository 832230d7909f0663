#include "emulation/MsftLibrary.h"

#include <algorithm>
#include <cstring>

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

}  // namespace corvane::emulation
