#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>

#include "emulation/Components.h"
#include "emulation/TypeLibrary.h"
#include "emulation/TypeLibraryFile.h"
#include "support/TemporaryFolder.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;
using namespace std::string_literals;

std::string dataFile(const std::string& name) {
    return CORVANE_TEST_DATA "/emulation/data/" + name;
}

std::string content(const std::string& name) {
    std::ifstream file(dataFile(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string shown(const std::optional<TypeLibraryAttributes>& library) {
    if (!library) return "nothing";
    return toUtf8(guidText(library->guid)) + ' ' + std::to_string(library->majorVersion) + '.' +
           std::to_string(library->minorVersion) + ' ' + std::to_string(library->lcid);
}

std::string read(const std::string& path) {
    return shown(readTypeLibrary(fromUtf8(path)));
}

constexpr const char* kFull = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9} 1.10 1036";
constexpr const char* kLimits = "{FEDCBA98-7654-3210-0123-456789ABCDEF} 65535.65534 66567";
constexpr const char* kPlain = "{00000001-0002-0003-0405-060708090A0B} 0.0 0";

void put(std::string& bytes, std::size_t offset, std::uint32_t word) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<char>(word >> (8 * i));
}

std::string words(std::initializer_list<std::uint32_t> numbers) {
    std::string bytes(numbers.size() * 4, '\0');
    std::size_t offset = 0;
    for (const std::uint32_t number : numbers)
        put(bytes, std::exchange(offset, offset + 4), number);
    return bytes;
}

std::uint32_t size(const std::string& bytes) {
    return static_cast<std::uint32_t>(bytes.size());
}

// A Windows module with one section, which holds resources 1 and 2 of type "TYPELIB".
std::string moduleWith(const std::string& first, const std::string& second, bool wide) {
    constexpr std::uint32_t kSection = 0x200;
    constexpr std::uint32_t kAddress = 0x1000;
    constexpr std::uint32_t kData = kAddress + 0xB0;
    constexpr std::uint32_t kLevel = 0x80000000;
    const std::string tree =
        words({0, 0, 0, 0x10001, kLevel | 0xA0, kLevel | 0x20, 10, kLevel | 0x20}) +
        words({0, 0, 0, 0x20000, 1, kLevel | 0x40, 2, kLevel | 0x60}) +
        words({0, 0, 0, 0x10000, 1033, 0x80, 0, 0, 0, 0, 0, 0x10000, 0, 0x90, 0, 0}) +
        words({kData, size(first), 0, 0, kData + size(first), size(second), 0, 0}) +
        "\7\0T\0Y\0P\0E\0L\0I\0B\0"s + first + second;

    const std::uint32_t optionalSize = (wide ? 112 : 96) + 3 * 8;
    std::string module = "MZ";
    module.resize(0x3C);
    module += words({0x40, 0x4550, 0x10000, 0, 0, 0, optionalSize, wide ? 0x20BU : 0x10BU});
    module.resize(0x58 + optionalSize - 3 * 8 - 4);
    module += words({3, 0, 0, 0, 0, kAddress, 0, 0, 0, 0, kAddress, size(tree), kSection});
    module.resize(kSection);
    return module + tree;
}

TEST(TypeLibrary, TellsGuidVersionAndLanguage) {
    EXPECT_EQ(read(dataFile("full.tlb")), kFull);
    EXPECT_EQ(read(dataFile("limits.tlb")), kLimits);
    EXPECT_EQ(read(dataFile("plain.tlb")), kPlain);
    std::string anonymous = content("plain.tlb");
    put(anonymous, 8, 0xFFFFFFFF);
    const TemporaryFolder folder;
    folder.write("a.tlb", anonymous);
    EXPECT_EQ(read(folder.path("a.tlb")), "{00000000-0000-0000-0000-000000000000} 0.0 0");
}

TEST(TypeLibrary, IsReadOutOfAModule) {
    const TemporaryFolder folder;
    for (const bool wide : {false, true}) {
        folder.write("m.dll", moduleWith(content("full.tlb"), content("plain.tlb"), wide));
        const std::string path = folder.path("m.dll");
        EXPECT_EQ(read(path), kFull);
        EXPECT_EQ(read(path + "\\1"), kFull);
        EXPECT_EQ(read(path + "\\2"), kPlain);
        for (const char* number : {"\\0", "\\3", "\\", "\\x", "\\65538", "\\4294967297"})
            EXPECT_EQ(read(path + number), "nothing") << number;
    }
}

TEST(TypeLibrary, IsNothingElse) {
    const TemporaryFolder folder;
    folder.write("empty", "");
    folder.write("text", "MSFT, they said");
    folder.write("old", "SLTG" + std::string(500, 'x'));
    folder.write("module", moduleWith("text", "", true));
    for (const char* name : {"empty", "text", "old", "module", "missing", ""})
        EXPECT_EQ(read(folder.path(name)), "nothing") << name;
    EXPECT_EQ(read(""), "nothing");
    EXPECT_EQ(read(dataFile("full.tlb") + "\\1"), "nothing");
}

// A file in memory on the heap, so that a read outside of it cannot go unseen.
class MemoryFile final : public InputFile {
public:
    explicit MemoryFile(std::string bytes) : bytes_(std::move(bytes)) {}
    std::uint64_t size() const override { return bytes_.size(); }
    bool read(std::uint64_t offset, std::span<char> bytes) const override {
        EXPECT_LE(offset + bytes.size(), bytes_.size());
        const std::string part = bytes_.substr(offset, bytes.size());
        std::copy(part.begin(), part.end(), bytes.begin());
        return part.size() == bytes.size();
    }

private:
    std::string bytes_;
};

std::string readBytes(const std::string& bytes) {
    const MemoryFile file(bytes);
    const FileWindow whole(file);
    if (const auto library = readMsftLibrary(whole)) return shown(library);
    const std::optional<FileWindow> resource = findModuleResource(whole, u"typelib", 2);
    return shown(resource ? readMsftLibrary(*resource) : std::nullopt);
}

TEST(TypeLibrary, StaysInsideADamagedFile) {
    const std::pair<std::string, std::string> cases[] = {
        {content("full.tlb"), kFull},
        {content("limits.tlb"), kLimits},
        {moduleWith(content("full.tlb"), content("plain.tlb"), true), kPlain},
        {moduleWith("", content("limits.tlb"), false), kLimits}};
    for (const auto& [whole, attributes] : cases) {
        ASSERT_EQ(readBytes(whole), attributes);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string result = readBytes(whole.substr(0, length));
            constexpr std::size_t kShortest = 0x54 + 15 * 16;
            // Beyond what is read a cut changes nothing.
            if (length < kShortest || result != attributes) {
                EXPECT_EQ(result, "nothing") << length;
            }
        }
        // Every word takes the values that are likely to reach too far.
        for (std::size_t i = 0; i + 4 <= whole.size(); ++i) {
            for (const std::uint32_t word : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U, ~0U}) {
                std::string damaged = whole;
                put(damaged, i, word);
                EXPECT_FALSE(readBytes(damaged).empty());
            }
        }
    }
}

}  // namespace
