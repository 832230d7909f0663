#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "emulation/Registry.h"
#include "emulation/RegistryText.h"
#include "emulation/RegistryTree.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;
using namespace std::string_literals;

class Registry : public testing::Test {
protected:
    void machine(std::string_view bytes) const { folder_.write("machine.reg", bytes); }
    void user(std::string_view bytes) const { folder_.write("user.reg", bytes); }

    // A value of HKLM\K as text: quoted, a number, "-" for one that is neither, and "none" without
    // the key.
    static std::string value(std::u16string_view name) {
        const auto key = RegistryKey::open(RegistryRoot::LocalMachine, u"K");
        if (!key) return "none";
        if (const auto text = key->text(name)) return '"' + toUtf8(*text) + '"';
        if (const auto number = key->number(name)) return std::to_string(*number);
        return "-";
    }

    static std::string subkeys(RegistryRoot root, std::u16string_view path) {
        const auto key = RegistryKey::open(root, path);
        std::string names;
        for (std::size_t i = 0; key && i < key->subkeyCount(); ++i)
            names += toUtf8(key->subkeyName(i)) + ' ';
        return names;
    }

    TemporaryFolder folder_;
    EnvironmentScope scope_{"CORVANE_REGISTRY_DIR", folder_.path()};
};

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

TEST_F(Registry, ReadsEveryFormOfValue) {
    const std::pair<const char*, const char*> cases[] = {
        {R"("v"="text")", R"("text")"},
        {R"(  "V" = "a" ; why)", R"("a")"},
        {R"("v"="C:\\a \"b\"\\")", R"("C:\a "b"\")"},
        {R"("v"="C:\a")", R"("C:\a")"},
        {R"("v"="a]=;b")", R"("a]=;b")"},
        {R"("v"=dword:0000040c)", "1036"},
        {R"("v"=DWORD:FFFFFFFF)", "4294967295"},
        {R"("v"=hex(4):0c,04,00,00)", "1036"},
        {R"("v"=hex(4):0c,04,00)", "-"},
        {R"("v"=hex:41,00)", "-"},
        {"\"v\"=hex(2):41,00,\\\r\n  e4,00,\\\r\n  00,00", "\"A\xC3\xA4\""},
        {R"("v"=hex(1):41,00,00,00,42,00,43)", R"("A")"},
        {R"("v"=-)", "-"},
        {"\"v\"=hex(2):41,\\\n\"v\"=\"next\"", R"("next")"},
        {"[-HKLM\\K]\n\"v\"=\"lost\"", "none"},
        {"[-HKEY_LOCAL_MACHINE\\k\\]\n[HKLM\\K]\n\"v\"=\"new\"", R"("new")"}};
    for (const auto& [line, expected] : cases) {
        machine("[HKLM\\K]\n\"v\"=dword:7\n" + std::string(line) + "\n");
        EXPECT_EQ(value(u"v"), expected) << line;
    }
}

TEST_F(Registry, PassesOverWhatCannotBeRead) {
    for (const std::string line :
         {R"("v"="open)", R"("v"="a" b)", R"("v")", R"("v"=)", R"("v"=dword:)",
          R"("v"=dword:123456789)", R"("v"=dword:12 34)", R"("v"=hex(2:41,00)", R"("v"=hex(2):4g)",
          R"("v"=hex(2):41 00)", "\"v\"=hex(2):41,\\", "\"v\"=hex(2):4x,\\\n00,00\n\"w\"=-",
          "[HKLM\\Broken\n\"v\"=\"lost\"", "[HKEY_USERS\\K]\n\"v\"=\"lost\"",
          "[-HKLM]\n[-HKCR\\]"}) {
        machine("[HKLM\\K]\n\"v\"=dword:7\n" + line + "\n\n[HKLM\\K]\n\"w\"=\"after\"");
        EXPECT_EQ(value(u"v"), "7") << line;
        EXPECT_EQ(value(u"w"), "\"after\"") << line;
    }
}

TEST_F(Registry, ReadsEveryEncodingOfAFile) {
    const std::u16string text =
        u"Windows Registry Editor Version 5.00\r\n[HKLM\\K]\r\n@=\"\u00E4\"";
    // Before version 5 the bytes of texts are in the code page.
    for (const std::string& bytes :
         {toUtf8(text), "\xEF\xBB\xBF" + toUtf8(text), "\xFF\xFE" + utf16(text, false),
          utf16(text, false), "\xFE\xFF" + utf16(text, true), utf16(text, true),
          utf16(text, true) + 'x', "REGEDIT4\n[HKLM\\K]\n@=hex(2):c3,a4,00\n"s}) {
        machine(bytes);
        EXPECT_EQ(value(u""), "\"\xC3\xA4\"") << bytes;
    }
}

TEST_F(Registry, DistinguishesNoDefaultValueFromOneThatIsNoText) {
    machine("[HKLM\\A]\n[HKLM\\B]\n@=dword:1\n[HKLM\\C]\n@=\"c\"");
    const auto text = [](std::u16string_view path) {
        return RegistryKey::open(RegistryRoot::LocalMachine, path)->defaultText();
    };
    EXPECT_EQ(text(u"A"), u"");
    EXPECT_EQ(text(u"B"), std::nullopt);
    EXPECT_EQ(text(u"C"), u"c");
}

TEST_F(Registry, EnumeratesInNameOrderAsCreated) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"2.0 1.a 10.0 1.0", "1.0 1.a 10.0 2.0 "},
        {"1.b 1.9 1.10 1.A 1.B", "1.10 1.9 1.A 1.b "},
        {"f 9 10 1f 2", "10 1f 2 9 f "},
        {"_ z A \xC3\xA4 \xC3\x84", "A z _ \xC3\xA4 "}};
    for (const auto& [created, listed] : cases) {
        std::string file;
        std::istringstream names(created);
        for (std::string name; names >> name;)
            file += "[HKLM\\K\\" + name + "]\n";
        machine(file);
        EXPECT_EQ(subkeys(RegistryRoot::LocalMachine, u"k"), listed);
    }
}

TEST_F(Registry, OpensPathsAsTheOriginalPlatformDoes) {
    machine("[HKEY_LOCAL_MACHINE\\A\\\\B\\]\n");
    const std::pair<std::u16string_view, bool> cases[] = {
        {u"", true},     {u"a\\b", true},  {u"A\\\\B\\", true}, {u"\\A", false},
        {u"A/B", false}, {u"A\\C", false}, {u"B", false},       {u"A\\B\\C", false}};
    for (const auto& [path, isThere] : cases)
        EXPECT_EQ(RegistryKey::open(RegistryRoot::LocalMachine, path).has_value(), isThere)
            << toUtf8(path);
}

TEST_F(Registry, LaysTheUsersClassesOverTheMachines) {
    machine(
        "[HKCR\\X]\n@=\"machine\"\n\"only\"=\"m\"\n[HKLM\\Software\\Classes\\X\\A]\n"
        "[HKCU\\Lost]\n");
    user(
        "[HKCU\\Software\\Classes\\x]\n@=\"user\"\n[HKEY_CLASSES_ROOT\\X\\B]\n[-HKCR\\X\\A]\n"
        "[HKLM\\Lost]\n");
    const auto key = RegistryKey::open(RegistryRoot::ClassesRoot, u"X");
    ASSERT_TRUE(key);
    EXPECT_EQ(key->defaultText(), u"user");
    EXPECT_EQ(key->text(u"only"), u"m");
    EXPECT_EQ(subkeys(RegistryRoot::ClassesRoot, u"X"), "A B ");
    EXPECT_EQ(subkeys(RegistryRoot::LocalMachine, u"SOFTWARE\\Classes\\X"), "A ");
    EXPECT_EQ(subkeys(RegistryRoot::CurrentUser, u""), "Software ");
    EXPECT_EQ(subkeys(RegistryRoot::LocalMachine, u""), "Software ");
}

TEST_F(Registry, SeesAChangedFileAndKeepsAnOpenKey) {
    EXPECT_EQ(value(u"v"), "none");
    machine("[HKLM\\K]\n\"v\"=dword:1");
    const auto open = RegistryKey::open(RegistryRoot::LocalMachine, u"K");
    for (const char* digit : {"2", "3", "4"}) {
        machine("[HKLM\\K]\n\"v\"=dword:" + std::string(digit));
        EXPECT_EQ(value(u"v"), digit);
    }
    ASSERT_TRUE(open);
    EXPECT_EQ(open->number(u"v"), 1U);
    std::filesystem::remove(folder_.path("machine.reg"));
    EXPECT_EQ(value(u"v"), "none");
}

TEST_F(Registry, StaysAsItWasFirstSeenWithinAState) {
    machine("[HKLM\\K]\n\"v\"=dword:1");
    {
        const corvane::emulation::RegistryState outer;
        machine("[HKLM\\K]\n\"v\"=dword:2");
        {
            const corvane::emulation::RegistryState inner;
            EXPECT_EQ(value(u"v"), "2");
        }
        machine("[HKLM\\K]\n\"v\"=dword:3");
        EXPECT_EQ(value(u"v"), "2");
    }
    EXPECT_EQ(value(u"v"), "3");
}

TEST_F(Registry, FindsTheUsersFileWithoutAFolderOfItsOwn) {
    const EnvironmentScope none("CORVANE_REGISTRY_DIR", nullptr);
    const EnvironmentScope home("HOME", folder_.path("home"));
    const EnvironmentScope config("XDG_CONFIG_HOME", nullptr);
    folder_.write("home/.config/corvane/user.reg", "[HKCU\\Home]");
    folder_.write("xdg/corvane/user.reg", "[HKCU\\Xdg]");
    EXPECT_EQ(subkeys(RegistryRoot::CurrentUser, u""), "Home ");
    config.set(folder_.path("xdg").c_str());
    EXPECT_EQ(subkeys(RegistryRoot::CurrentUser, u""), "Xdg ");
    config.set("relative");
    EXPECT_EQ(subkeys(RegistryRoot::CurrentUser, u""), "Home ");
}

TEST_F(Registry, SurvivesHostileFiles) {
    std::string deep = "[HKLM";
    for (int i = 0; i < 100'000; ++i)
        deep += "\\a";
    const std::string zero(1, '\0');
    std::string many;
    for (int i = 0; i < 50'000; ++i)
        many += "[HKLM\\Many\\" + std::to_string(i * 7919 % 50'000) + "]\n";
    machine(deep + "]\n" + "[HKLM\\" + std::string(256, 'n') + "]\n[HKLM\\nul" + zero + "]\n" +
            many + "\"v\"=\"" + std::string(1'000'000, '\\') +
            "\n\"v\"=hex:" + std::string(1'000'000, ',') + "\n[HKLM\\K]\n\"v\"=\"a" + zero +
            "b\"\n\"" + zero + "\"=\"a\"\n");
    EXPECT_EQ(subkeys(RegistryRoot::LocalMachine, u""), "K Many ");
    EXPECT_EQ(RegistryKey::open(RegistryRoot::LocalMachine, u"Many")->subkeyCount(), 50'000U);
    EXPECT_EQ(value(u"v"), "\"a\"");
}

TEST(RegistryText, MakesAMillionKeysAndNoMore) {
    constexpr int kDepth = 500;
    std::string below;
    for (int i = 1; i < kDepth; ++i)
        below += "\\k";
    std::string text;
    for (int i = 0; i < 2'001; ++i)
        text += "[HKLM\\" + std::to_string(i) + below + "]\n";
    text += "\"v\"=\"lost\"\n[HKLM\\0\\k]\n\"v\"=\"there\"\n";
    RegistryNode root;
    applyRegistryText(fromUtf8(text), RegistryRoot::LocalMachine, root);
    EXPECT_NE(root.find(u"1999" + fromUtf8(below)), nullptr);
    EXPECT_EQ(root.find(u"2000"), nullptr);
    const RegistryNode* former = root.find(u"0\\k");
    ASSERT_NE(former, nullptr);
    ASSERT_NE(former->value(u"v"), nullptr);
    EXPECT_EQ(former->value(u"v")->text, u"there");
}

TEST_F(Registry, AnswersOnManyThreadsWhileItsFileChanges) {
    machine("[HKLM\\K]\n\"v\"=dword:1");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this, i] {
            for (int n = 0; n < 50; ++n) {
                if (i == 0) user("[HKCU\\" + std::to_string(n) + "]");
                EXPECT_EQ(value(u"v"), "1");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
