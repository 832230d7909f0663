#include <iostream>

#include "Commands.h"
#include "files/TextFile.h"
#include "files/XmlLayout.h"

namespace {

class ConvertCommand : public Command {
public:
    explicit ConvertCommand(CLI::App& program)
        : Command(program, "convert",
                  "Write a rule file or index in its normal form, so that two can be compared",
                  "Exit status: 0 it is written, 1 --check finds another form, 2 bad usage or a\n"
                  "file that cannot be read or written. Only white space, quotes and the order of\n"
                  "attributes change.") {
        addText(parser(), "FILE", file_, "Rule file or index of user-defined rules").required();
        const Option output =
            addText(parser(), "OUT", output_, "File to write, else standard output");
        const Option inPlace =
            addFlag(parser(), "--in-place", inPlace_, trUtf8("Replace the file itself"))
                .excludes(output);
        addFlag(parser(), "--check", isCheck_,
                trUtf8("Write nothing, tell whether the file has the form"))
            .excludes(output)
            .excludes(inPlace);
    }

    int run(Console& console) override {
        CStringW problem;
        const std::optional<std::string> xml = xmlOfFile(file_, problem);
        if (!xml) {
            console.report(problem);
            return kUnusable;
        }
        const std::string text = laidOut(*xml, kUsualIndent);
        if (isCheck_) return text == *xml ? kGood : kWrong;
        const CStringW target = inPlace_ ? file_ : output_;
        if (target.IsEmpty()) {
            std::cout << text;
            return kGood;
        }
        if (replaceFile(target, text)) return kGood;
        console.report(tr("{0}: cannot be written", target));
        return kUnusable;
    }

private:
    CStringW file_;
    CStringW output_;
    bool inPlace_ = false;
    bool isCheck_ = false;
};

}  // namespace

std::unique_ptr<Command> makeConvertCommand(CLI::App& program) {
    return std::make_unique<ConvertCommand>(program);
}
