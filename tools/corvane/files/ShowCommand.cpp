#include <memory>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/scriptrules/RuleIndexScope.h>

#include "Commands.h"
#include "Text.h"
#include "files/LoadedRule.h"
#include "files/ParameterText.h"

namespace {

struct ShowOptions {
    CStringW ruleFile;
    FolderOptions folders;
};

CStringW originText(RuleOrigin origin) {
    switch (origin) {
        case RuleOrigin::Module:
            return tr("rule module");
        case RuleOrigin::Index:
            return tr("index of user-defined rules");
        case RuleOrigin::RuleFile:
            return tr("rule file");
        case RuleOrigin::Nowhere:
            break;
    }
    return tr("none: the rule cannot be made");
}

/// Prints one rule as lines of a label and a text.
class RuleSheet {
public:
    RuleSheet(const LoadedRule& loaded, Console& console)
        : loaded_(loaded), rule_(*loaded.rule), console_(console) {}

    void print() const {
        printHeading();
        printTexts();
        for (const CStringW& category : rule_.m_lstCategories)
            line("also in", category);
        for (const CStringW& engine : rule_.m_lstEngines)
            line("engine", shownPath(engine));
        for (const results::Remark& problem : loaded_.problems)
            line("problem", CStringW::FromUtf8(problem.shown), Tone::Bad);
        printParameters(rule_.m_Parameters, u"");
        printConstraints();
        console_.endLine();
    }

private:
    void line(Message label, const CStringW& text, Tone tone = Tone::Plain) const {
        console_.writeField(tr(label), text, tone);
    }

    void printHeading() const {
        console_.write(rule_.m_csRuleName, Tone::Heading);
        console_.writeLine(loaded_.line > 0 ? u"  " + tr("(line {0})", loaded_.line) : CStringW());
    }

    void printTexts() const {
        line("definition", originText(loaded_.origin));
        line("category", rule_.m_csRuleCategory);
        line("severity", tr("{0}, status {1}, life status {2}", rule_.m_lRuleSeverity,
                            rule_.m_lRuleStatus, rule_.m_lRuleLifeStatus));
        line("description", rule_.m_csRuleDescription);
        line("source", rule_.m_csRuleSource);
        line("module", rule_.m_csRuleModuleName);
        line(loaded_.isScript() ? Message("script") : Message("file"), rule_.m_csRuleFileName);
        line("module file", rule_.m_csModuleFileName);
    }

    void printParameters(const CQorArray<CQorParamStorage*>& storages,
                         const CStringW& indent) const {
        for (int i = 0; i < storages.GetSize(); ++i) {
            if (const CQorParamStorage* storage = storages.GetAt(i))
                printParameter(*storage, indent);
        }
    }

    void printParameter(const CQorParamStorage& storage, const CStringW& indent) const {
        const ParameterText parameter = describe(storage);
        CStringW text = indent;
        text.AppendFormat(u"%d %s (%s%s)", storage.m_lId, parameter.name, parameter.kind,
                          parameter.on ? CStringW() : tr(", ") + tr("off"));
        for (std::size_t i = 0; i < parameter.values.size(); ++i)
            text += (i == 0 ? CStringW(u" = ") : CStringW(u", ")) + parameter.values[i];
        line("parameter", text);
    }

    void printConstraints() const {
        for (int i = 0; i < rule_.m_Constraints.GetSize(); ++i) {
            const CQORConstraint* constraint = rule_.m_Constraints.GetAt(i);
            if (!constraint) continue;
            CStringW text = constraint->m_Type == QORConstraint_Material
                                ? tr("material {0}", constraint->m_csValue)
                                : constraint->m_csValue;
            if (!constraint->m_bStatus) text += u" (" + tr("off") + u")";
            line("constraint", text);
            printParameters(constraint->m_Parameters, u"  ");
        }
    }

    const LoadedRule& loaded_;
    const CQorRule& rule_;
    Console& console_;
};

int showRules(const ShowOptions& options, Console& console) {
    const std::unique_ptr<RuleFile> file = RuleFile::load(options.ruleFile, console);
    if (!file) return kUnusable;
    RuleModules modules(options.folders.modules);
    const corvane::RuleIndexScope indexes;
    bool whole = true;
    for (QorLong i = 0; i < file->size(); ++i) {
        const MessageScope scope(console, file->place(i));
        const LoadedRule loaded = loadRule(*file, i, modules);
        RuleSheet(loaded, console).print();
        whole = whole && loaded.problems.empty();
    }
    return whole ? kGood : kWrong;
}

class ShowCommand : public Command {
public:
    explicit ShowCommand(CLI::App& program)
        : Command(program, "show", "Show what a rule file holds, with each rule's definition",
                  "Exit status: 0 every rule is whole, 1 one could not be made or has a problem,\n"
                  "2 bad usage or a file that cannot be read.") {
        addText(parser(), "RULEFILE", options_.ruleFile, "Rule file").required();
        options_.folders.declare(parser());
    }

    int run(Console& console) override {
        options_.folders.apply();
        return showRules(options_, console);
    }

private:
    ShowOptions options_;
};

}  // namespace

std::unique_ptr<Command> makeShowCommand(CLI::App& program) {
    return std::make_unique<ShowCommand>(program);
}
