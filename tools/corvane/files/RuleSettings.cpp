#include "files/RuleSettings.h"

#include <array>
#include <charconv>
#include <string_view>
#include <system_error>

#include <corvane/text/CStringW.h>

namespace {

using lint::Element;

constexpr std::string_view kWhite = " \t\r\n";

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(kWhite);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

std::string valueOf(const Element& element, std::string_view name) {
    const lint::Attribute* attribute = element.attribute(name);
    return attribute ? attribute->value : std::string();
}

/// A number in its shortest form, since files write it in several; any other text as it is.
std::string plainNumber(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return text;
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

/// "1.4301" may be a material.
bool holdsTexts(const Element& parameter) {
    const Element* type = parameter.child("ParameterType");
    return type && (trimmed(type->text) == "5" || trimmed(type->text) == "15");
}

class Reader {
public:
    explicit Reader(RuleSettings& settings) : settings_(settings) {}

    void read(const Element& element, const std::string& prefix) {
        for (const lint::Attribute& attribute : element.attributes)
            add(prefix + attribute.name, attribute.value);
        if (!trimmed(element.text).empty()) add(prefix + "text", trimmed(element.text));
        const bool areNumbers = !holdsTexts(element);
        for (const Element& child : element.children)
            if (child.name == "Value")
                add(prefix + "Value",
                    areNumbers ? plainNumber(trimmed(child.text)) : trimmed(child.text));
            else
                readChild(child, prefix);
    }

private:
    void readChild(const Element& child, const std::string& prefix) {
        if (child.name == "Parameter")
            read(child, prefix + "parameter " + valueOf(child, "Type") + " ");
        else if (child.name == "Constraint")
            read(child, prefix + "constraint " + valueOf(child, "Type") + " " +
                            valueOf(child, "Value") + ", ");
        else if (child.name == "Engine")
            read(child, prefix + "engine " + valueOf(child, "Engine") + " ");
        else if (child.name == "Category")
            add(prefix + "category", valueOf(child, "Category"));
        else if (child.name == "Categories" || child.name == "Engines")
            read(child, prefix);
        else if (child.children.empty() && child.attributes.empty())
            add(prefix + child.name, trimmed(child.text));
        else
            read(child, prefix + child.name + " ");
    }

    /// Several of one name are a list.
    void add(const std::string& name, const std::string& value) {
        const auto [entry, isNew] = settings_.try_emplace(name, value);
        if (!isNew) entry->second += ", " + value;
    }

    RuleSettings& settings_;
};

}  // namespace

RulesByName rulesOf(const Element& root) {
    RulesByName rules;
    std::map<std::string, int> counts;
    RuleSettings others;
    for (const Element& child : root.children) {
        if (child.name != "Rule") {
            Reader(others).read(child, child.name + " ");
            continue;
        }
        const std::string name = valueOf(child, "Name");
        const std::string key = CStringW::FromUtf8(name).MakeLower().ToUtf8();
        Reader(rules[{key, counts[key]++}]).read(child, {});
    }
    if (!others.empty()) rules[{std::string(), counts[std::string()]}] = others;
    return rules;
}
