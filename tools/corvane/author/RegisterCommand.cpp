#include <CLI/CLI.hpp>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <corvane/platform/Environment.h>
#include <corvane/scriptrules/TypeLibDetails.h>

#include "Commands.h"
#include "Text.h"
#include "doctor/Places.h"

namespace {

namespace fs = std::filesystem;

/// In the usual groups. In memory the first three of them begin with their least byte.
CStringW guidText(const Guid& guid) {
    std::array<unsigned char, sizeof(Guid)> bytes{};
    std::memcpy(bytes.data(), &guid, bytes.size());
    CStringW text = u"{";
    for (const int i : {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15}) {
        if (i < 0)
            text += u"-";
        else
            text.AppendFormat(u"%02X", static_cast<unsigned>(bytes[static_cast<std::size_t>(i)]));
    }
    return text + u"}";
}

/// The registry's text for a type library.
CStringW entryOf(const TypeLibDetails& library, bool forMachine) {
    CStringW path = library.fileName;
    path.Replace(u"\\", u"\\\\");
    path.Replace(u"\"", u"\\\"");
    CStringW text;
    text.Format(u"\n[%s\\Software\\Classes\\TypeLib\\%s\\%x.%x\\%x\\win64]\n@=\"%s\"\n",
                forMachine ? u"HKEY_LOCAL_MACHINE" : u"HKEY_CURRENT_USER", guidText(library.guid),
                library.majorVersion, library.minorVersion, library.lcid, path);
    return text;
}

class RegisterCommand : public Command {
public:
    explicit RegisterCommand(CLI::App& program)
        : Command(program, "register",
                  "Register an engine's type library, so that rules can name the engine",
                  "Exit status: 0 it is registered, 2 bad usage, a file that is no type library,\n"
                  "or a registry file that cannot be written. Prints the element by which a rule\n"
                  "names the engine.") {
        addText(parser(), "FILE", file_, "Type library, beside the module of the same stem")
            ->required();
        parser().add_flag(
            "--machine", forMachine_,
            trUtf8("For all users, in /etc/corvane/machine.reg, not for the user alone"));
        addText(parser(), "--registry", registry_,
                "Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR")
            ->type_name("DIR");
    }

    int run(Console& console) override {
        std::error_code ignored;
        const fs::path full = fs::weakly_canonical(fs::absolute(placeOf(file_), ignored), ignored);
        TypeLibDetails library(CStringW(full.u16string()));
        if (!library.ReadTypeLibAttributes())
            return refuse(console, tr("{0}: no type library that can be read", file_));
        const std::optional<fs::path> target = registryFile();
        if (!target)
            return refuse(console, tr("there is no home folder: set HOME, or use --machine"));
        const CStringW fault = add(library, *target);
        if (!fault.IsEmpty()) return refuse(console, CStringW(target->u16string()) + u": " + fault);
        CStringW element;
        element.Format(
            u"<Engine Engine=\"%s\" GUID=\"%s\" MajorVersion=\"%d\" "
            u"MinorVersion=\"%d\" LCID=\"%x\"/>",
            CStringW(lastName(library.fileName)), guidText(library.guid), library.majorVersion,
            library.minorVersion, library.lcid);
        console.writeLine(element);
        return kGood;
    }

private:
    static int refuse(Console& console, const CStringW& why) {
        console.report(u"corvane register: " + why);
        return kUnusable;
    }

    std::optional<fs::path> registryFile() const {
        const char* name = forMachine_ ? "machine.reg" : "user.reg";
        const CStringW folder = registry_.IsEmpty()
                                    ? CStringW(corvane::GetEnvironmentText(u"CORVANE_REGISTRY_DIR"))
                                    : registry_;
        if (!folder.IsEmpty()) return placeOf(folder) / name;
        if (forMachine_) return fs::path("/etc/corvane") / name;
        std::optional<fs::path> user = userConfigurationFolder();
        if (user) *user /= name;
        return user;
    }

    /// What is wrong; empty when the entry is in the file. What the file has stays: a later entry
    /// comes over an earlier one.
    CStringW add(const TypeLibDetails& library, const fs::path& target) const {
        std::string text;
        if (std::ifstream file(target, std::ios::binary); file)
            text.assign(std::istreambuf_iterator<char>(file), {});
        if (text.find('\0') != text.npos)
            return tr("it is UTF-16, as Windows writes it: save it as UTF-8 first");
        const std::string entry = entryOf(library, forMachine_).ToUtf8();
        // Registered last, it counts already.
        if (text.ends_with(entry)) return {};
        if (text.empty()) text = "Windows Registry Editor Version 5.00\n";
        if (!text.ends_with('\n')) text += '\n';
        std::error_code failed;
        fs::create_directories(target.parent_path(), failed);
        const fs::path fresh = target.string() + ".new";
        std::ofstream file(fresh, std::ios::binary);
        file << text << entry;
        file.close();
        if (file) fs::rename(fresh, target, failed);
        if (file && !failed) return {};
        fs::remove(fresh, failed);
        return tr("it cannot be written");
    }

    CStringW file_;
    CStringW registry_;
    bool forMachine_ = false;
};

}  // namespace

std::unique_ptr<Command> makeRegisterCommand(CLI::App& program) {
    return std::make_unique<RegisterCommand>(program);
}
