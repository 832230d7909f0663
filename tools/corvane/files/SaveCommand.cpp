#include <exception>
#include <memory>

#include <corvane/platform/ComError.h>
#include <corvane/rules/WritingLoss.h>
#include <corvane/scriptrules/RuleIndexScope.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Commands.h"
#include "Text.h"
#include "files/LoadedRule.h"
#include "files/TextFile.h"
#include "files/XmlLayout.h"
#include "lint/SourceTree.h"

namespace {

struct SaveOptions {
    CStringW ruleFile;
    CStringW output;
    FolderOptions folders;
};

/// Makes a document the current one, on which rules write themselves, for a block.
class CurrentDocumentScope {
public:
    explicit CurrentDocumentScope(QorXMLDocument& document) { SetXMLDoc(&document); }
    CurrentDocumentScope(const CurrentDocumentScope&) = delete;
    CurrentDocumentScope& operator=(const CurrentDocumentScope&) = delete;
    ~CurrentDocumentScope() { SetXMLDoc(nullptr); }
};

/// The rule's new element, or null with one more problem.
std::unique_ptr<QorXMLNode> writtenForm(LoadedRule& loaded) {
    try {
        return std::unique_ptr<QorXMLNode>(loaded.rule->GetXML());
    } catch (const _com_error& error) {
        loaded.problems.push_back(
            remark("writing the rule failed: {0}", statusText(error.Error())));
    } catch (const std::exception& error) {
        loaded.problems.push_back(remark("writing the rule failed: {0}", error.what()));
    } catch (...) {
        loaded.problems.push_back(remark("writing the rule failed with an unknown exception"));
    }
    return nullptr;
}

int saveRules(const SaveOptions& options, Console& console) {
    const std::unique_ptr<RuleFile> file = RuleFile::load(options.ruleFile, console);
    if (!file) return kUnusable;
    if (!file->included().empty()) {
        console.report(tr("{0}: it includes other files, which a file of whole rules cannot say",
                          options.ruleFile));
        return kUnusable;
    }

    RuleModules modules(options.folders.modules);
    const corvane::RuleIndexScope indexes;
    QorXMLDocument document;
    const CurrentDocumentScope scope(document);
    const std::unique_ptr<QorXMLNode> root(document.CreateNode(file->rootName()));
    document.AppendNode(root.get());
    bool whole = true;
    for (QorLong i = 0; i < file->size(); ++i) {
        const MessageScope messages(console, file->place(i));
        LoadedRule loaded = loadRule(*file, i, modules);
        std::unique_ptr<QorXMLNode> element = writtenForm(loaded);
        // A rule that cannot be made is not lost: its element is copied as it is.
        if (!element) element.reset(file->element(i).CloneNode());
        const auto losses = corvane::FindWritingLosses(file->element(i), *element);
        root->AppendNode(element.get());
        whole = whole && loaded.problems.empty() && losses.empty();
        for (const results::Remark& problem : loaded.problems)
            console.report(file->place(i) + u": " + CStringW::FromUtf8(problem.shown));
        for (const corvane::WritingLoss& loss : losses)
            console.report(file->placeOf(loss.line) + u": " + loss.text);
    }
    // A file that is replaced keeps its own form; a new one has that of the file that was read.
    const std::string former =
        bytesOfFile(options.output).value_or(bytesOfFile(options.ruleFile).value_or(std::string()));
    const std::string text = laidOut(document.GetXML().ToUtf8(), indentOf(lint::utf8Of(former)));
    if (!replaceFile(options.output, text)) {
        console.report(tr("{0}: cannot be written", options.output));
        return kUnusable;
    }
    return whole ? kGood : kWrong;
}

class SaveCommand : public Command {
public:
    explicit SaveCommand(CLI::App& program)
        : Command(
              program, "save",
              "Read a rule file and write its rules to another one, with each rule's definition",
              "Exit status: 0 every rule is whole, 1 one could not be made, so that its element\n"
              "goes over as it stands, has a problem or loses something, 2 bad usage or a file\n"
              "that cannot be read or written.") {
        addText(parser(), "RULEFILE", options_.ruleFile, "Rule file").required();
        addText(parser(), "OUT", options_.output, "File to write; it is replaced as a whole")
            .required();
        options_.folders.declare(parser());
    }

    int run(Console& console) override {
        options_.folders.apply();
        return saveRules(options_, console);
    }

private:
    SaveOptions options_;
};

}  // namespace

std::unique_ptr<Command> makeSaveCommand(CLI::App& program) {
    return std::make_unique<SaveCommand>(program);
}
