#include <elf.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>

#include <corvane/platform/LoadedModule.h>

#include "support/TemporaryFolder.h"
#include "system/Unicode.h"

namespace {

using corvane::LoadedModule;
using corvane::system::fromUtf8;
using corvane::system::toUtf8;

class Modules : public testing::Test {
protected:
    // What is said of a file with that content; empty when it is loaded. Each file is a new one:
    // what the process has mapped must not be cut.
    std::string faultOf(const std::string& content) {
        const std::string name = std::to_string(++files_) + ".so";
        folder_.write(name, content);
        return loaded(name);
    }
    std::string loaded(const std::string& name) const {
        const LoadedModule module(fromUtf8(folder_.path(name)));
        return module ? "" : toUtf8(module.fault()) + ".";
    }
    std::string changed(const std::function<void(Elf64_Ehdr&, Elf64_Phdr*)>& change) const {
        std::string bytes = module_;
        auto& header = *reinterpret_cast<Elf64_Ehdr*>(bytes.data());
        change(header, reinterpret_cast<Elf64_Phdr*>(bytes.data() + header.e_phoff));
        return bytes;
    }
    static std::string content() {
        std::ifstream file(CORVANE_TEST_COMPONENT, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const TemporaryFolder folder_;
    const std::string module_ = content();
    int files_ = 0;
};

TEST_F(Modules, AreRefusedWhenTheirFileIsCutOff) {
    std::size_t end = 0;
    changed([&end](const Elf64_Ehdr& header, const Elf64_Phdr* segments) {
        for (int i = 0; i < header.e_phnum; ++i) {
            if (segments[i].p_type == PT_LOAD)
                end = std::max<std::size_t>(end, segments[i].p_offset + segments[i].p_filesz);
        }
    });
    ASSERT_GT(end, 4000U);
    // Sections and what else lies after the segments are not needed to run a module.
    EXPECT_EQ(faultOf(module_.substr(0, end)), "");
    for (const std::size_t length : {end - 1, end / 2, std::size_t{4000}, std::size_t{100},
                                     std::size_t{64}, std::size_t{63}, std::size_t{0}})
        EXPECT_NE(faultOf(module_.substr(0, length)), "") << length;
    EXPECT_NE(faultOf(module_.substr(0, 4000)).find("shorter than its program headers"),
              std::string::npos);
}

TEST_F(Modules, AreRefusedWhenTheirHeadersLieOrAreOfAnotherKind) {
    EXPECT_EQ(faultOf(changed([](auto&, auto*) {})), "");
    const std::function<void(Elf64_Ehdr&, Elf64_Phdr*)> changes[] = {
        [](auto& header, auto*) { header.e_phoff = ~Elf64_Off{0} - 8; },
        [](auto& header, auto*) { header.e_phnum = 0xFFFF; },
        [](auto& header, auto*) { header.e_ident[EI_CLASS] = ELFCLASS32; },
        [](auto& header, auto*) { header.e_machine = EM_AARCH64; },
        [](auto&, auto* segments) { segments[0].p_offset = ~Elf64_Off{0} - 0xFFF; },
        [](auto&, auto* segments) { segments[0].p_filesz = ~Elf64_Xword{0}; }};
    for (const auto& change : changes)
        EXPECT_NE(faultOf(changed(change)), "") << &change - changes;
    EXPECT_NE(faultOf("no module"), "");
    ASSERT_EQ(::mkfifo(folder_.path("pipe.so").c_str(), 0600), 0);
    std::filesystem::create_directory(folder_.path("folder.so"));
    EXPECT_NE(loaded("pipe.so"), "");
    EXPECT_NE(loaded("folder.so"), "");
}

}  // namespace
