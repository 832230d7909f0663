#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <corvane/platform/ComponentRegistration.h>
#include <corvane/platform/Environment.h>
#include <corvane/scriptrules/TypeLibDetails.h>

#include "Commands.h"
#include "Text.h"
#include "author/RegistryText.h"
#include "doctor/Places.h"
#include "files/TextFile.h"

namespace {

namespace fs = std::filesystem;

class RegisterCommand : public Command {
public:
    explicit RegisterCommand(CLI::App& program)
        : Command(program, "register",
                  "Register an engine's type library, so that rules can name the engine",
                  "Exit status: 0 it is registered or, with --remove, is not any more, 1 there was "
                  "nothing\n"
                  "to remove, 2 bad usage, a file that is no type library, or a registry file that "
                  "cannot\n"
                  "be written. Prints the element by which a rule names the engine.") {
        addText(parser(), "FILE", file_, "Type library, beside the module of the same stem")
            .required();
        addFlag(parser(), "--machine", forMachine_,
                trUtf8("For all users, in /etc/corvane/machine.reg, not for the user alone"));
        addFlag(parser(), "--remove", isRemoval_,
                trUtf8("Take the registration back; the library may be gone already"));
        addText(parser(), "--registry", registry_,
                "Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR")
            .typeName("DIR");
    }

    int run(Console& console) override {
        std::error_code ignored;
        const fs::path full = fs::weakly_canonical(fs::absolute(placeOf(file_), ignored), ignored);
        TypeLibDetails library(CStringW(full.u16string()));
        const bool isRead = library.ReadTypeLibAttributes();
        if (!isRead && !isRemoval_)
            return refuse(console, tr("{0}: no type library that can be read", file_));
        const std::optional<fs::path> target = registryFile();
        if (!target)
            return refuse(console, tr("there is no home folder: set HOME, or use --machine"));
        const std::string text = contentOf(*target);
        if (text.find('\0') != text.npos)
            return refuse(console, CStringW(target->u16string()) + u": " +
                                       tr("it is UTF-16, as Windows writes it: save it as UTF-8 "
                                          "first"));
        return isRemoval_ ? remove(console, text, library, isRead, *target)
                          : add(console, text, library, *target);
    }

private:
    static int refuse(Console& console, const CStringW& why) {
        console.report(u"corvane register: " + why);
        return kUnusable;
    }

    static std::string contentOf(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
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

    int add(Console& console, const std::string& text, const TypeLibDetails& library,
            const fs::path& target) const {
        const std::string entered = registry::withEntry(text, library, forMachine_);
        if (entered != text && !write(target, entered)) return cannotWrite(console, target);
        CStringW element;
        element.Format(
            u"<Engine Engine=\"%s\" GUID=\"%s\" MajorVersion=\"%d\" "
            u"MinorVersion=\"%d\" LCID=\"%x\"/>",
            CStringW(lastName(library.fileName)), CStringW(corvane::GuidText(library.guid)),
            library.majorVersion, library.minorVersion, library.lcid);
        console.writeLine(element);
        return kGood;
    }

    static int remove(Console& console, const std::string& text, const TypeLibDetails& library,
                      bool isRead, const fs::path& target) {
        const std::optional<std::string> rest = registry::withoutEntries(text, library, isRead);
        if (!rest) {
            console.report(
                tr("{0} is not registered in {1}", library.fileName, target.u16string()));
            return kWrong;
        }
        return write(target, *rest) ? kGood : cannotWrite(console, target);
    }

    static int cannotWrite(Console& console, const fs::path& target) {
        return refuse(console, tr("{0}: cannot be written", target.u16string()));
    }

    static bool write(const fs::path& target, const std::string& text) {
        std::error_code failed;
        fs::create_directories(target.parent_path(), failed);
        return replaceFile(CStringW(target.u16string()), text);
    }

    CStringW file_;
    CStringW registry_;
    bool forMachine_ = false;
    bool isRemoval_ = false;
};

}  // namespace

std::unique_ptr<Command> makeRegisterCommand(CLI::App& program) {
    return std::make_unique<RegisterCommand>(program);
}
