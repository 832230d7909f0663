#include "author/Skeleton.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>
#include <utility>

#include <corvane/app/Installation.h>

#include "Text.h"
#include "doctor/Places.h"
#include "language/Messages.h"
#include "lint/LuaNames.h"

namespace skeleton {

namespace fs = std::filesystem;

namespace {

constexpr File kRuleModule[] = {{"rule-module/CMakeLists.txt", "CMakeLists.txt"},
                                {"rule-module/Rule.cpp.in", "@CLASS@Rule.cpp"},
                                {"rule-module/english.txt", "strings/english.txt"},
                                {"rule-module/french.txt", "strings/french.txt"},
                                {"rule-module/rules.xml", "rules.xml"},
                                {"rule-module/README.md", "README.md"},
                                {"common/box.stl", "box.stl"}};
constexpr File kScriptRule[] = {{"script-rule/rule.lua", "scripts/@NAME@.lua"},
                                {"script-rule/UserDefinedFile.xml", "scripts/UserDefinedFile.xml"},
                                {"script-rule/rules.xml", "rules.xml"},
                                {"script-rule/strict.xml", "strict.xml"},
                                {"script-rule/test.sh", "test.sh"},
                                {"script-rule/README.md", "README.md"},
                                {"common/box.stl", "box.stl"}};
constexpr File kEngine[] = {{"engine/CMakeLists.txt", "CMakeLists.txt"},
                            {"engine/engine.cpp.in", "@NAME@.cpp"},
                            {"engine/engine.idl", "@NAME@.idl"},
                            {"engine/engine.tlb", "@NAME@.tlb"},
                            {"engine/rule.lua", "scripts/@NAME@.lua"},
                            {"engine/UserDefinedFile.xml", "scripts/UserDefinedFile.xml"},
                            {"script-rule/rules.xml", "rules.xml"},
                            {"engine/README.md", "README.md"},
                            {"common/box.stl", "box.stl"}};
constexpr File kHost[] = {{"host/CMakeLists.txt", "CMakeLists.txt"},
                          {"host/host.cpp.in", "@NAME@.cpp"},
                          {"host/ConfigModule.ini.in", "ConfigModule.ini.in"},
                          {"script-rule/rule.lua", "scripts/@NAME@.lua"},
                          {"script-rule/UserDefinedFile.xml", "scripts/UserDefinedFile.xml"},
                          {"script-rule/rules.xml", "rules.xml"},
                          {"script-rule/strict.xml", "strict.xml"},
                          {"host/README.md", "README.md"},
                          {"common/box.stl", "box.stl"}};

constexpr const char* kBuild =
    "cmake -S . -B build && cmake --build build && ctest --test-dir build";
constexpr Kind kKinds[] = {
    {"rule-module", "A rule module: compiled rules with texts in two languages", kRuleModule,
     kBuild},
    {"script-rule", "A script rule, with its index and two rule files", kScriptRule, "sh test.sh"},
    {"engine", "An engine of scripts in machine code, with its type library", kEngine, kBuild},
    {"host", "A program that runs script rules", kHost, kBuild}};

using Bytes = std::array<unsigned char, 16>;

/// Of version 4: all bits but six are random.
Bytes randomIdentifier() {
    std::random_device random;
    Bytes bytes{};
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random() & 0xFFU);
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    return bytes;
}

std::string textOf(const Bytes& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        char digits[3] = "";
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(bytes[i]));
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += digits;
    }
    return text;
}

/// As a type library holds it: the first three groups from the least byte on.
std::string storedForm(Bytes bytes) {
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::swap(bytes[4], bytes[5]);
    std::swap(bytes[6], bytes[7]);
    return {bytes.begin(), bytes.end()};
}

std::string classOf(const std::string& name) {
    std::string text;
    bool begins = true;
    for (const char letter : name) {
        if (letter != '_')
            text += begins ? static_cast<char>(std::toupper(static_cast<unsigned char>(letter)))
                           : letter;
        begins = letter == '_';
    }
    return text;
}

/// What takes the place of the marks.
class Marks {
public:
    explicit Marks(const std::string& name) {
        const Bytes identifier = randomIdentifier();
        // The identifier in the type library of the skeletons counts up.
        Bytes counting{};
        for (std::size_t i = 0; i < counting.size(); ++i)
            counting[i] = static_cast<unsigned char>(i);
        marks_ = {{{"@NAME@", name},
                   {"@CLASS@", classOf(name)},
                   {"@GUID@", textOf(identifier)},
                   {storedForm(counting), storedForm(identifier)}}};
    }

    std::string replacedIn(std::string text) const {
        for (const auto& [mark, value] : marks_)
            for (std::size_t at = 0; (at = text.find(mark, at)) != text.npos; at += value.size())
                text.replace(at, mark.size(), value);
        return text;
    }

private:
    std::array<std::pair<std::string, std::string>, 4> marks_;
};

bool writeFile(const fs::path& source, const fs::path& target, const Marks& marks) {
    std::ifstream from(source, std::ios::binary);
    if (!from) return false;
    const std::string text{std::istreambuf_iterator<char>(from), {}};
    std::error_code failed;
    fs::create_directories(target.parent_path(), failed);
    std::ofstream to(target, std::ios::binary);
    to << marks.replacedIn(text);
    to.close();
    return static_cast<bool>(to);
}

}  // namespace

std::span<const Kind> kinds() {
    return kKinds;
}

std::string nameFault(const std::string& name) {
    constexpr std::size_t kLongest = 40;
    const auto isPlain = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') || letter == '_';
    };
    if (name.empty() || name.size() > kLongest || !std::ranges::all_of(name, isPlain) ||
        !(name[0] >= 'A' && name[0] != '_'))
        return trUtf8(
            "a name begins with a letter and has at most 40 letters, digits and "
            "underscores, all ASCII");
    // Targets that build systems have, and the library's own.
    constexpr std::string_view kTaken[] = {
        "all",        "clean",         "corvane", "depend",
        "edit_cache", "help",          "install", "list_install_components",
        "package",    "rebuild_cache", "test",    "main"};
    if (std::ranges::find(kTaken, name) != std::end(kTaken) || lint::isKeyword(name) ||
        lint::hostNames().contains(name) || name == "mesh")
        return trUtf8("the name is taken: builds or scripts have a meaning for it");
    return {};
}

std::string write(const Kind& kind, const std::string& name, const fs::path& folder) {
    const fs::path from =
        placeOf(shownPath(corvane::GetInstallation().installFolder + u"/share/corvane/skeletons"));
    std::error_code failed;
    const bool isNew = !fs::exists(fs::symlink_status(folder, failed));
    if (!isNew && !(fs::is_directory(folder, failed) && fs::is_empty(folder, failed)))
        return trUtf8("it is there already, and nothing is overwritten");
    if (isNew && !fs::create_directories(folder, failed))
        return trUtf8("the folder cannot be made");
    const Marks marks(name);
    for (const File& file : kind.files) {
        if (writeFile(from / file.source, folder / marks.replacedIn(file.target), marks)) continue;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, failed))
            fs::remove_all(entry.path(), failed);
        if (isNew) fs::remove(folder, failed);
        return trUtf8("{0} cannot be written, or the installation lacks {1}",
                      marks.replacedIn(file.target), (from / file.source).string());
    }
    return {};
}

}  // namespace skeleton
