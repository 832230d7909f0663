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
        takeCommand(parser());
        for (const skeleton::Kind& kind : skeleton::kinds()) {
            CLI::App* app = addCommand(parser(), kind.name, kind.description);
            onRead(*app, [this, &kind] { kind_ = &kind; });
            addWord(*app, "NAME", name_, trUtf8("What it is called"))
                .required()
                .check(skeleton::nameFault);
            addText(*app, "--folder", folder_, "Where to write it, else a new folder of that name")
                .typeName("DIR");
        }
    }

    int run(Console& console) override {
        const CStringW folder = folder_.IsEmpty() ? CStringW::FromUtf8(name_) : folder_;
        const std::string fault = skeleton::write(*kind_, name_, placeOf(folder));
        if (!fault.empty()) {
            console.report(folder + u": " + CStringW::FromUtf8(fault));
            return kUnusable;
        }
        console.writeLine(tr("Written to {0}. Next, in that folder:", shownPath(folder)));
        console.writeLine(u"  " + CStringW(kind_->next));
        return kGood;
    }

private:
    const skeleton::Kind* kind_ = nullptr;
    std::string name_;
    CStringW folder_;
};

}  // namespace

std::unique_ptr<Command> makeNewCommand(CLI::App& program) {
    return std::make_unique<NewCommand>(program);
}
