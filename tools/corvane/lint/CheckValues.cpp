#include <algorithm>
#include <charconv>
#include <limits>

#include <corvane/base/Text.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/rules/QORConstraintType.h>

#include "lint/Form.h"

namespace lint {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    return corvane::trimmed(text, kBlanks);
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// "1,5", "1.234,5" and "1'000": digits with signs between them that the reader does not know.
bool isLocalNumber(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty() || !isDigit(text.front()) || !isDigit(text.back())) return false;
    const bool plain = std::ranges::all_of(text, [](char letter) {
        return isDigit(letter) || letter == ',' || letter == '.' || letter == '\'';
    });
    return plain && text.find_first_of(",'") != text.npos;
}

enum class Reading { Whole, Tail, Nothing };

Reading readNumber(std::string_view text, bool isWhole, double& value) {
    if (text.starts_with('+')) text.remove_prefix(1);
    const char* end = text.data() + text.size();
    const char* stop = text.data();
    if (isWhole) {
        while (stop != end && (isDigit(*stop) || (stop == text.data() && *stop == '-')))
            ++stop;
        if (stop == text.data() || (*text.data() == '-' && stop == text.data() + 1))
            return Reading::Nothing;
        std::from_chars(text.data(), stop, value);
    } else {
        const auto [at, status] = std::from_chars(text.data(), end, value);
        if (status == std::errc::invalid_argument) return Reading::Nothing;
        stop = at;
    }
    return stop == end ? Reading::Whole : Reading::Tail;
}

// Not `quoted`, which the standard library offers for such a text.
std::string inQuotes(std::string_view text) {
    constexpr std::size_t kShown = 40;
    std::string result = "\"" + std::string(text.substr(0, kShown));
    return result + (text.size() > kShown ? "...\"" : "\"");
}

/// A number as the reader takes it, or a problem.
std::optional<double> checkNumber(std::string_view text, Place place, const std::string& what,
                                  bool isWhole, Report& report) {
    const std::string_view plain = trimmed(text);
    double value = 0;
    const Reading reading = readNumber(plain, isWhole, value);
    if (reading == Reading::Whole) return value;
    if (isLocalNumber(plain))
        report.add(kLocalNumber, place,
                   trUtf8("{0} is {1}, a number in a local form", what, inQuotes(plain)));
    else if (reading == Reading::Tail)
        report.add(kNumberWithTail, place,
                   trUtf8("{0} is {1}, a number with more after it", what, inQuotes(plain)));
    else
        report.add(kNotANumber, place,
                   trUtf8("{0} is {1}, which is no number", what, inQuotes(plain)));
    return std::nullopt;
}

void checkFlag(const Attribute* flag, const std::string& what, Report& report) {
    if (!flag || !flag->isKnown || flag->value == "0" || flag->value == "1") return;
    report.add(kFlag, flag->valuePlace, trUtf8("{0} is {1}", what, inQuotes(flag->value)));
}

Place placeOfText(const Element& element) {
    return element.textPlace.line > 0 ? element.textPlace : element.place;
}

std::optional<std::int64_t> childNumber(const Element& parameter, const char* name,
                                        Report& report) {
    const Element* child = parameter.child(name);
    if (!child || !child->isTextKnown) return std::nullopt;
    return checkInteger(child->text, placeOfText(*child), name, report);
}

/// Kind of the values of a script's parameter: the low digit of its ParameterType.
int kindOfScriptParameter(std::int64_t parameterType) {
    const std::int64_t kind = parameterType > 10 ? parameterType - 10 : parameterType;
    return kind >= Type_Int && kind <= Type_CStringPtr ? static_cast<int>(kind) : 0;
}

class ParameterCheck {
public:
    ParameterCheck(const Element& parameter, const RuleKnowledge& known, Report& report)
        : parameter_(parameter), known_(known), report_(report) {}

    void run(std::set<std::int64_t>& numbers) {
        checkFlag(parameter_.attribute("Status"), "Status", report_);
        checkKey(numbers);
        const std::optional<std::int64_t> op = childNumber(parameter_, "Operator", report_);
        const std::optional<std::int64_t> type = childNumber(parameter_, "ParameterType", report_);
        checkSaving(op);
        const bool byAttributes = type == QorParamType_Attributes;
        const int kind = kindOf(type.value_or(0));
        std::size_t count = 0;
        for (const Element& child : parameter_.children) {
            if (child.name != "Value") continue;
            ++count;
            checkValue(child, kind, byAttributes);
        }
        if (op == QorOperator_Grouped && parameter_.isTextKnown && count % 2 != 0 && count % 3 != 0)
            report_.add(kDroppedGroup, parameter_.place,
                        trCount({"{1} has operator 1 and {0} value, neither pairs nor triples",
                                 "{1} has operator 1 and {0} values, neither pairs nor triples"},
                                static_cast<std::int64_t>(count), what())
                            .ToUtf8());
    }

private:
    std::string what() const {
        const Attribute* key = parameter_.attribute("Type");
        return key ? trUtf8("parameter {0}", inQuotes(key->value))
                   : trUtf8("parameter without Type");
    }

    void checkKey(std::set<std::int64_t>& numbers) {
        const Attribute* key = parameter_.attribute("Type");
        if (!key && known_.isOverride && parameter_.attribute("Name")) return;
        if (!key) {
            report_.add(kUnknownParameter, parameter_.place,
                        trUtf8("the parameter has no Type, so no rule finds it"),
                        trUtf8("Give it the number of the parameter as Type."));
            return;
        }
        if (!key->isKnown) return;
        number_ = checkInteger(key->value, key->valuePlace, "Type", report_);
        if (!number_) return;
        if (!numbers.insert(*number_).second)
            report_.add(kRepeatedParameter, parameter_.place, trUtf8("{0} occurs again", what()));
        if (known_.parameters && !known_.parameters->contains(*number_))
            report_.add(kUnknownParameter, key->valuePlace,
                        trUtf8("the rule has no parameter {0}", *number_), numbersOfRule());
    }

    std::string numbersOfRule() const {
        constexpr std::size_t kMostNamed = 12;
        if (known_.parameters->empty() || known_.parameters->size() > kMostNamed) return {};
        std::string text;
        for (const auto& [number, kind] : *known_.parameters)
            text += (text.empty() ? "" : ", ") + std::to_string(number);
        return trUtf8("It has {0}.", text);
    }

    /// A script's parameter without Operator gets the operator that is saved, one of an override
    /// that of the included rule; a compiled rule's gets 0.
    void checkSaving(std::optional<std::int64_t> op) {
        const bool isMissing = !parameter_.child("Operator") && parameter_.isTextKnown;
        if (isMissing && known_.isOverride) return;
        if (isMissing && known_.kind != RuleKnowledge::Kind::Compiled) return;
        if (isMissing || op == QorOperator_NotSaved || op == QorOperator_Hidden)
            report_.add(kNotSaved, parameter_.place,
                        isMissing ? trUtf8("{0} has no Operator, which counts as 0", what())
                                  : trUtf8("{0} has operator {1}", what(), *op));
    }

    int kindOf(std::int64_t parameterType) const {
        if (known_.kind == RuleKnowledge::Kind::Script) return kindOfScriptParameter(parameterType);
        if (!known_.parameters || !number_) return 0;
        const auto found = known_.parameters->find(*number_);
        return found == known_.parameters->end() ? 0 : found->second;
    }

    void checkValue(const Element& value, int kind, bool byAttributes) {
        const bool hasAttributes = std::ranges::any_of(value.attributes, [](const Attribute& one) {
            return one.name.starts_with("Attribute");
        });
        if (byAttributes || kind == Type_CustomRuleData) {
            if (!hasAttributes || !byAttributes)
                report_.add(kUnreadKind, value.place,
                            byAttributes
                                ? trUtf8("with ParameterType 24 the value is in Attribute1 to "
                                         "Attribute4")
                                : trUtf8("a record is read with ParameterType 24 only"));
            else if (value.textPlace.line > 0)
                report_.add(kIgnoredText, value.textPlace,
                            trUtf8("text in a <Value> that is read by its attributes"));
            return;
        }
        if (hasAttributes)
            report_.add(kUnreadKind, value.place,
                        trUtf8("attributes are read with ParameterType 24 only"));
        if (value.isTextKnown) checkText(value, kind);
    }

    void checkText(const Element& value, int kind) {
        const std::string name = trUtf8("Value of {0}", what());
        const Place place = placeOfText(value);
        switch (kind) {
            case Type_Int:
            case Type_Long:
            case Type_ColorRef:
                checkInteger(value.text, place, name, report_);
                break;
            case Type_Double:
                checkNumber(value.text, place, name, false, report_);
                break;
            case Type_Bool:
                if (value.text != "0" && value.text != "1" && !isWordOfScript(value.text))
                    report_.add(kFlag, place, trUtf8("{0} is {1}", name, inQuotes(value.text)));
                break;
            case Type_COleDateTimePtr:
                report_.add(kUnreadKind, place, trUtf8("{0} is a date, which no file holds", name));
                break;
            case Type_CStringPtr:
                break;
            default:
                if (isLocalNumber(trimmed(value.text)) &&
                    known_.kind != RuleKnowledge::Kind::Compiled)
                    checkNumber(value.text, place, name, false, report_);
        }
    }

    bool isWordOfScript(const std::string& text) const {
        return known_.kind == RuleKnowledge::Kind::Script && (text == "true" || text == "false");
    }

    const Element& parameter_;
    const RuleKnowledge& known_;
    Report& report_;
    std::optional<std::int64_t> number_;
};

void checkParameters(const Element& parent, const RuleKnowledge& known, Report& report) {
    std::set<std::int64_t> numbers;
    for (const Element& child : parent.children)
        if (child.name == "Parameter") ParameterCheck(child, known, report).run(numbers);
}

void checkConstraint(const Element& constraint, const RuleKnowledge& known, Report& report) {
    const Attribute* type = constraint.attribute("Type");
    const std::string text = type ? type->value : std::string();
    const bool isMaterial =
        text.size() == 8 && std::ranges::equal(text, std::string_view("material"),
                                               [](char a, char b) { return (a | 0x20) == b; });
    if (!isMaterial && (!type || type->isKnown)) {
        const std::string words[] = {"Material"};
        report.add(kUnknownConstraint, type ? type->valuePlace : constraint.place,
                   type ? trUtf8("no constraint has the type {0}", inQuotes(text))
                        : trUtf8("the constraint has no Type"),
                   didYouMean(text, words));
    }
    checkFlag(constraint.attribute("Status"), trUtf8("Status of a constraint"), report);
    // Which parameters a constraint of a compiled rule has, only its rule's code says.
    RuleKnowledge own = known;
    if (known.kind == RuleKnowledge::Kind::Compiled) own.parameters.reset();
    checkParameters(constraint, own, report);
}

void checkSeverity(const Element& rule, const Vocabulary& words, Report& report) {
    const Attribute* severity = rule.attribute("Severity");
    if (!severity || !severity->isKnown) return;
    const std::optional<std::int64_t> number =
        checkInteger(severity->value, severity->valuePlace, "Severity", report);
    if (number && *number != -1 && !words.severities.contains(*number))
        report.add(kUnknownSeverity, severity->valuePlace,
                   trUtf8("severity {0} has no name", *number));
}

void checkCategory(const Attribute* category, const Vocabulary& words, Report& report) {
    if (!category || !category->isKnown || category->value.empty() ||
        words.categories.contains(category->value))
        return;
    const std::vector<std::string> known(words.categories.begin(), words.categories.end());
    report.add(kUnknownCategory, category->valuePlace,
               trUtf8("no category is called {0}", inQuotes(category->value)),
               didYouMean(category->value, known));
}

}  // namespace

std::optional<std::int64_t> checkInteger(const std::string& text, Place place,
                                         const std::string& what, Report& report) {
    const std::optional<double> value = checkNumber(text, place, what, true, report);
    if (!value) return std::nullopt;
    if (*value < std::numeric_limits<std::int32_t>::min() ||
        *value > std::numeric_limits<std::int32_t>::max()) {
        report.add(kOutOfRange, place, trUtf8("{0} is {1}", what, inQuotes(trimmed(text))));
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*value);
}

void checkValues(const Element& rule, const RuleKnowledge& known, const Vocabulary& words,
                 Report& report) {
    const Attribute* name = rule.attribute("Name");
    if (!name || (name->value.empty() && name->isKnown))
        report.add(kNoName, name ? name->valuePlace : rule.place, trUtf8("the rule has no name"));
    checkSeverity(rule, words, report);
    for (const char* number : {"Status", "LifeStatus"})
        if (const Attribute* attribute = rule.attribute(number); attribute && attribute->isKnown)
            checkInteger(attribute->value, attribute->valuePlace, number, report);
    for (const char* category : {"RuleCategory", "CategoryText"})
        checkCategory(rule.attribute(category), words, report);
    if (const Element* categories = rule.child("Categories"))
        for (const Element& child : categories->children)
            checkCategory(child.attribute("Category"), words, report);
    checkParameters(rule, known, report);
    for (const Element& child : rule.children)
        if (child.name == "Constraint") checkConstraint(child, known, report);
}

}  // namespace lint
