#include "Commands.h"
#include "Text.h"
#include "files/RuleSettings.h"
#include "files/TextFile.h"

namespace {

class Comparison {
public:
    explicit Comparison(Console& console) : console_(console) {}

    bool isEqual() const { return isEqual_; }

    void compare(const RulesByName& before, const RulesByName& after) {
        for (const auto& [key, rule] : before) {
            const auto other = after.find(key);
            if (other == after.end())
                tell(u"- ", title(key, rule), Tone::Bad);
            else
                compareRules(title(key, rule), rule, other->second);
        }
        for (const auto& [key, rule] : after)
            if (!before.contains(key)) tell(u"+ ", title(key, rule), Tone::Good);
    }

private:
    static CStringW title(const RulesByName::key_type& key, const RuleSettings& rule) {
        const auto name = rule.find("Name");
        if (name == rule.end()) return tr("outside of rules");
        CStringW text = wide(name->second);
        if (key.second > 0) text.AppendFormat(u" (%d)", key.second + 1);
        return text;
    }

    void compareRules(const CStringW& title, const RuleSettings& before,
                      const RuleSettings& after) {
        for (const auto& [name, value] : before) {
            const auto other = after.find(name);
            if (other == after.end())
                tell(u"- ", title + u": " + wide(name) + u" = " + wide(value), Tone::Bad);
            else if (other->second != value)
                tell(u"  ",
                     title + u": " + wide(name) + u" = " + wide(value) + u" -> " +
                         wide(other->second),
                     Tone::Doubtful);
        }
        for (const auto& [name, value] : after)
            if (!before.contains(name))
                tell(u"+ ", title + u": " + wide(name) + u" = " + wide(value), Tone::Good);
    }

    void tell(const char16_t* mark, const CStringW& text, Tone tone) {
        isEqual_ = false;
        console_.writeLine(mark + text, tone);
    }

    Console& console_;
    bool isEqual_ = true;
};

class DiffCommand : public Command {
public:
    explicit DiffCommand(CLI::App& program)
        : Command(program, "diff", "Compare two rule files, rule by rule and value by value",
                  "Exit status: 0 they say the same, 1 they do not, 2 bad usage or a file that\n"
                  "cannot be read. A line tells what is only in the first file (-), only in the\n"
                  "second (+) or other in both. Order, white space and comments do not count.") {
        addText(parser(), "FIRST", first_, "Rule file or index").required();
        addText(parser(), "SECOND", second_, "The one to compare it with").required();
    }

    int run(Console& console) override {
        const std::optional<RulesByName> before = read(first_, console);
        const std::optional<RulesByName> after = read(second_, console);
        if (!before || !after) return kUnusable;
        Comparison comparison(console);
        comparison.compare(*before, *after);
        return comparison.isEqual() ? kGood : kWrong;
    }

private:
    static std::optional<RulesByName> read(const CStringW& path, Console& console) {
        CStringW problem;
        const std::optional<std::string> xml = xmlOfFile(path, problem);
        if (xml) return rulesOf(lint::readSource(*xml));
        console.report(problem);
        return std::nullopt;
    }

    CStringW first_;
    CStringW second_;
};

}  // namespace

std::unique_ptr<Command> makeDiffCommand(CLI::App& program) {
    return std::make_unique<DiffCommand>(program);
}
