#include "emulation/TypeLibraryFile.h"

#include <array>

#include "system/TextLines.h"
#include "system/Unicode.h"

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

namespace {

constexpr std::uint16_t kDosMagic = 0x5A4D;
constexpr std::uint64_t kHeaderOffset = 0x3C;
constexpr std::uint32_t kMagic = 0x00004550;

// Offsets from the header's magic.
constexpr std::uint64_t kSectionCount = 6;
constexpr std::uint64_t kOptionalSize = 20;
constexpr std::uint64_t kOptionalHeader = 24;
constexpr std::uint16_t kOptionalMagic32 = 0x10B;
constexpr std::uint16_t kOptionalMagic64 = 0x20B;
// From the start of the optional header; their count is right before the directories.
constexpr std::uint64_t kDirectories32 = 96;
constexpr std::uint64_t kDirectories64 = 112;
constexpr std::uint64_t kDirectorySize = 8;
constexpr std::uint32_t kResourceDirectory = 2;

constexpr std::uint64_t kSectionSize = 40;
constexpr std::uint64_t kSectionAddress = 12;
constexpr std::uint64_t kSectionLength = 16;
constexpr std::uint64_t kSectionOffset = 20;

// A level of the tree of resources: a head with the counts of named and numbered entries, then the
// entries, each a name or number and an offset into the tree.
constexpr std::uint64_t kNamedCount = 12;
constexpr std::uint64_t kNumberedCount = 14;
constexpr std::uint64_t kLevelHead = 16;
constexpr std::size_t kEntrySize = 8;
constexpr std::uint32_t kHighBit = 0x80000000;

class Module {
public:
    explicit Module(const FileWindow& file) : file_(file) {}

    // The tree of resources, from its start to the end of its section.
    std::optional<FileWindow> resources() {
        const auto header = file_.number32(kHeaderOffset);
        if (file_.number16(0) != kDosMagic || !header || file_.number32(*header) != kMagic)
            return std::nullopt;
        const std::uint64_t optional = *header + kOptionalHeader;
        const auto magic = file_.number16(optional);
        const bool wide = magic == kOptionalMagic64;
        if (!wide && magic != kOptionalMagic32) return std::nullopt;
        const std::uint64_t directories = optional + (wide ? kDirectories64 : kDirectories32);
        const auto count = file_.number32(directories - sizeof(std::uint32_t));
        const auto sections = file_.number16(*header + kSectionCount);
        const auto optionalSize = file_.number16(*header + kOptionalSize);
        const auto address = file_.number32(directories + kResourceDirectory * kDirectorySize);
        if (!count || *count <= kResourceDirectory || !sections || !optionalSize || !address)
            return std::nullopt;
        sections_ = *sections;
        sectionTable_ = optional + *optionalSize;
        return *address == 0 ? std::nullopt : atAddress(*address);
    }

    // What lies at an address of the loaded module, up to the end of its section.
    std::optional<FileWindow> atAddress(std::uint32_t address) const {
        for (std::uint64_t i = 0; i < sections_; ++i) {
            const std::uint64_t section = sectionTable_ + i * kSectionSize;
            const auto start = file_.number32(section + kSectionAddress);
            const auto length = file_.number32(section + kSectionLength);
            const auto offset = file_.number32(section + kSectionOffset);
            if (!start || !length || !offset) return std::nullopt;
            if (address < *start || address - *start >= *length) continue;
            const std::uint32_t skipped = address - *start;
            return file_.part(std::uint64_t{*offset} + skipped, *length - skipped);
        }
        return std::nullopt;
    }

private:
    const FileWindow& file_;
    std::uint64_t sectionTable_ = 0;
    std::uint16_t sections_ = 0;
};

bool isNamed(const FileWindow& tree, std::uint32_t nameOffset, std::u16string_view wanted) {
    const auto length = tree.number16(nameOffset);
    if (length != wanted.size()) return false;
    const auto bytes =
        tree.bytes(std::uint64_t{nameOffset} + sizeof *length, wanted.size() * sizeof(char16_t));
    return bytes && compareNoCase(fromUtf16Bytes(*bytes), wanted) == 0;
}

// The offset after the first entry of a level whose name or number is accepted.
template <typename Accept>
std::optional<std::uint32_t> findEntry(const FileWindow& tree, std::uint32_t level,
                                       const Accept& accept) {
    const auto named = tree.number16(level + kNamedCount);
    const auto numbered = tree.number16(level + kNumberedCount);
    if (!named || !numbered) return std::nullopt;
    const std::size_t count = std::size_t{*named} + *numbered;
    const auto entries = tree.bytes(level + kLevelHead, count * kEntrySize);
    if (!entries) return std::nullopt;
    for (std::size_t i = 0; i < count; ++i) {
        const char* entry = entries->data() + i * kEntrySize;
        if (accept(littleEndian<std::uint32_t>(entry)))
            return littleEndian<std::uint32_t>(entry + sizeof(std::uint32_t));
    }
    return std::nullopt;
}

// The offset of the next level below such an entry.
template <typename Accept>
std::optional<std::uint32_t> findLevel(const FileWindow& tree, std::uint32_t level,
                                       const Accept& accept) {
    const std::optional<std::uint32_t> offset = findEntry(tree, level, accept);
    if (!offset || !(*offset & kHighBit)) return std::nullopt;
    return *offset & ~kHighBit;
}

}  // namespace

std::optional<FileWindow> findModuleResource(const FileWindow& file, std::u16string_view type,
                                             std::uint32_t number) {
    Module module(file);
    const std::optional<FileWindow> tree = module.resources();
    if (!tree) return std::nullopt;
    const auto numbers = findLevel(*tree, 0, [&](std::uint32_t id) {
        return (id & kHighBit) && isNamed(*tree, id & ~kHighBit, type);
    });
    if (!numbers) return std::nullopt;
    const auto languages =
        findLevel(*tree, *numbers, [number](std::uint32_t id) { return id == number; });
    if (!languages) return std::nullopt;
    const auto leaf = findEntry(*tree, *languages, [](std::uint32_t) { return true; });
    if (!leaf || (*leaf & kHighBit)) return std::nullopt;
    const auto address = tree->number32(*leaf);
    const auto length = tree->number32(*leaf + std::uint64_t{4});
    if (!address || !length) return std::nullopt;
    const std::optional<FileWindow> rest = module.atAddress(*address);
    return rest ? rest->part(0, *length) : std::nullopt;
}

}  // namespace corvane::emulation
