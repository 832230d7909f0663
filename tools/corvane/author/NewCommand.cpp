#include <CLI/CLI.hpp>

#include "Commands.h"
#include "Text.h"
#include "author/Skeleton.h"
#include "doctor/Places.h"

namespace {

class NewCommand : public Command {
public:
    explicit NewCommand(CLI::App& program)
        : Command(program, "new",
                  "Write a small working rule module, script rule, engine or host to start from",
                  "Exit status: 0 the files are written, 2 bad usage, a folder that is not empty,\n"
                  "or one that cannot be written. Nothing is overwritten.") {
        parser().require_subcommand(1);
        for (const skeleton::Kind& kind : skeleton::kinds()) {
            CLI::App* app = addCommand(parser(), kind.name, kind.description);
            app->add_option("NAME", name_, trUtf8("What it is called"))
                ->required()
                ->check([](auto& name) { return skeleton::nameFault(name); });
            addText(*app, "--folder", folder_, "Where to write it, else a new folder of that name")
                ->type_name("DIR");
        }
    }

    int run(Console& console) override {
        const std::string chosen = parser().get_subcommands().front()->get_name();
        const CStringW folder = folder_.IsEmpty() ? CStringW::FromUtf8(name_) : folder_;
        for (const skeleton::Kind& kind : skeleton::kinds()) {
            if (kind.name != chosen) continue;
            const std::string fault = skeleton::write(kind, name_, placeOf(folder));
            if (!fault.empty()) {
                console.report(folder + u": " + CStringW::FromUtf8(fault));
                return kUnusable;
            }
            console.writeLine(tr("Written to {0}. Next, in that folder:", shownPath(folder)));
            console.writeLine(u"  " + CStringW(kind.next));
        }
        return kGood;
    }

private:
    std::string name_;
    CStringW folder_;
};

}  // namespace

std::unique_ptr<Command> makeNewCommand(CLI::App& program) {
    return std::make_unique<NewCommand>(program);
}
