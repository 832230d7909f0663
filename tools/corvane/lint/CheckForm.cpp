#include <algorithm>
#include <array>
#include <span>

#include "lint/Form.h"

namespace lint {

namespace {

/// An element of the form: what may be in it.
struct Form {
    std::string name;
    std::vector<std::string> attributes;
    std::vector<std::string> children;
    std::vector<std::string> single;  ///< Children of which only the first one is read.
    bool hasText = false;
};

const Form kForms[] = {
    {"Include", {"Set", "File"}, {}, {}},
    {"Exclude", {"Name"}, {}, {}},
    {"Rule",
     {"Name", "Description", "Source", "Module", "File", "Severity", "Status", "LifeStatus",
      "RuleCategory", "CategoryText", "ModuleFile"},
     {"Parameter", "Constraint", "Categories", "Engines"},
     {"Categories", "Engines"}},
    {"Parameter",
     {"Name", "Type", "Status"},
     {"Operator", "ParameterType", "Value", "Remarks"},
     {"Operator", "ParameterType", "Remarks"}},
    {"Operator", {}, {}, {}, true},
    {"ParameterType", {}, {}, {}, true},
    {"Remarks", {}, {}, {}, true},
    {"Value", {"Attribute1", "Attribute2", "Attribute3", "Attribute4"}, {}, {}, true},
    {"Constraint", {"Type", "Value", "Status"}, {"Parameter"}, {}},
    {"Categories", {}, {"Category"}, {}},
    {"Category", {"Category"}, {}, {}},
    {"Engines", {}, {"Engine"}, {}},
    {"Engine", {"Engine", "GUID", "MajorVersion", "MinorVersion", "LCID"}, {}, {}}};

const Form* formOf(const std::string& name) {
    const auto found = std::ranges::find(kForms, name, &Form::name);
    return found == std::end(kForms) ? nullptr : found;
}

bool has(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

/// Declarations and attributes of other vocabularies, such as a schema's place, are not ours.
bool isForeign(const std::string& name) {
    return name == "xmlns" || name.find(':') != name.npos;
}

bool isNumbered(const std::string& name) {
    constexpr std::string_view kStem = "Attribute";
    return name.size() > kStem.size() && name.starts_with(kStem) &&
           name.find_first_not_of("0123456789", kStem.size()) == name.npos;
}

void checkAttributes(const Element& element, const Form& form, Report& report) {
    for (const Attribute& attribute : element.attributes) {
        if (isForeign(attribute.name) || has(form.attributes, attribute.name)) continue;
        if (form.name == "Value" && isNumbered(attribute.name)) {
            report.add(kLostAttribute, attribute.place,
                       trUtf8("\"{0}\" is never read", attribute.name));
            continue;
        }
        report.add(kUnknownAttribute, attribute.place,
                   trUtf8("<{0}> has no attribute \"{1}\"", form.name, attribute.name),
                   didYouMean(attribute.name, form.attributes));
    }
}

void checkText(const Element& element, Report& report) {
    if (element.textPlace.line > 0)
        report.add(kIgnoredText, element.textPlace,
                   trUtf8("text in <{0}>, which has none", element.name));
}

void checkElement(const Element& element, const Form& form, Report& report) {
    checkAttributes(element, form, report);
    if (!form.hasText) checkText(element, report);
    std::vector<std::string> seen;
    for (const Element& child : element.children) {
        if (isForeign(child.name)) continue;
        if (!has(form.children, child.name)) {
            report.add(kUnknownElement, child.place,
                       trUtf8("<{0}> has no child <{1}>", form.name, child.name),
                       didYouMean(child.name, form.children));
            continue;
        }
        if (has(form.single, child.name) && has(seen, child.name))
            report.add(kRepeatedElement, child.place,
                       trUtf8("another <{0}> in the same <{1}>", child.name, form.name));
        seen.push_back(child.name);
        checkElement(child, *formOf(child.name), report);
    }
}

}  // namespace

void checkForm(const Element& root, Report& report) {
    const std::array<std::string, 3> known{"Rule", "Include", "Exclude"};
    checkText(root, report);
    for (const Element& child : root.children) {
        if (std::ranges::find(known, child.name) != known.end())
            checkElement(child, *formOf(child.name), report);
        else if (!isForeign(child.name))
            report.add(kUnknownElement, child.place,
                       trUtf8("<{0}> has no child <{1}>", root.name, child.name),
                       didYouMean(child.name, known));
    }
}

}  // namespace lint
