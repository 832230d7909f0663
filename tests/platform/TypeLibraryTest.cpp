#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/Components.h"
#include "platform/FileWindow.h"
#include "platform/ModuleResource.h"
#include "platform/MsftLibrary.h"
#include "platform/TypeLibrary.h"
#include "platform/Unicode.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace corvane::platform;

std::string dataFile(const std::string& name) {
    return CORVANE_TEST_DATA "/platform/data/" + name;
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

void put(std::string& bytes, std::size_t offset, std::uint32_t number, std::size_t size = 4) {
    bytes.resize(std::max(bytes.size(), offset + size));
    for (std::size_t i = 0; i < size; ++i)
        bytes[offset + i] = static_cast<char>(number >> (8 * i));
}

// A Windows module with one section, which holds resources 1 and 2 of type "TYPELIB".
std::string moduleWith(const std::string& first, const std::string& second, bool wide) {
    constexpr std::uint32_t kSection = 0x200;
    constexpr std::uint32_t kAddress = 0x1000;
    constexpr std::uint32_t kSubtree = 0x80000000;
    const std::uint32_t optional = 0x40 + 24;
    const std::uint32_t directories = optional + (wide ? 112 : 96);
    const std::uint32_t sections = directories + 3 * 8;
    std::string tree;
    const auto level = [&tree](std::size_t at, std::size_t named, std::size_t numbered,
                               std::vector<std::pair<std::uint32_t, std::uint32_t>> entries) {
        put(tree, at + 12, static_cast<std::uint32_t>(named), 2);
        put(tree, at + 14, static_cast<std::uint32_t>(numbered), 2);
        for (const auto& [name, offset] : entries) {
            put(tree, at + 16, name);
            put(tree, at + 20, offset);
            at += 8;
        }
    };
    level(0, 1, 1, {{kSubtree | 0xC0, kSubtree | 0x20}, {10, kSubtree | 0x20}});
    level(0x20, 0, 2, {{1, kSubtree | 0x40}, {2, kSubtree | 0x60}});
    level(0x40, 0, 1, {{1033, 0x80}});
    level(0x60, 0, 1, {{0, 0x90}});
    put(tree, 0xC0, 7, 2);
    for (const char letter : std::string_view("TYPELIB"))
        tree.append({letter, '\0'});
    std::uint32_t data = 0x80;
    for (const std::string& library : {first, second}) {
        put(tree, data, kAddress + static_cast<std::uint32_t>(tree.size()));
        put(tree, data + 4, static_cast<std::uint32_t>(library.size()));
        tree += library;
        data += 0x10;
    }
    std::string module = "MZ";
    put(module, 0x3C, 0x40);
    put(module, 0x40, 0x4550);
    put(module, 0x46, 1, 2);
    put(module, 0x54, sections - optional, 2);
    put(module, optional, wide ? 0x20B : 0x10B, 2);
    put(module, directories - 4, 3);
    put(module, directories + 2 * 8, kAddress);
    put(module, sections + 12, kAddress);
    put(module, sections + 16, static_cast<std::uint32_t>(tree.size()));
    put(module, sections + 20, kSection);
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
        {moduleWith("", content("limits.tlb"), false), kLimits},
    };
    for (const auto& [whole, attributes] : cases) {
        ASSERT_EQ(readBytes(whole), attributes);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string result = readBytes(whole.substr(0, length));
            constexpr std::size_t kShortest = 0x54 + 15 * 16;
            EXPECT_TRUE(result == "nothing" || (length >= kShortest && result == attributes))
                << length << ' ' << result;
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
