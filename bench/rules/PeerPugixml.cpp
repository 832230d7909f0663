// Rules read from the tree of pugixml, and written through it.
#include <charconv>
#include <pugixml.hpp>

#include "PeerRule.h"

namespace {

void readParameter(const pugi::xml_node& element, PeerRule& rule) {
    PeerRule::Parameter& parameter = rule.parameters.emplace_back();
    parameter.number = element.attribute("Type").as_int();
    parameter.name = element.attribute("Name").value();
    parameter.status = element.attribute("Status").as_bool();
    parameter.op = element.child("Operator").text().as_int();
    parameter.type = element.child("ParameterType").text().as_int();
    parameter.remarks = element.child_value("Remarks");
    for (const pugi::xml_node& value : element.children("Value")) {
        if (value.first_attribute()) {
            std::vector<std::string>& record = rule.records.emplace_back();
            for (const pugi::xml_attribute& attribute : value.attributes())
                record.emplace_back(attribute.value());
        } else {
            rule.addValue(value.child_value());
        }
    }
}

void readRule(const pugi::xml_node& element, PeerRule& rule) {
    rule.name = element.attribute("Name").value();
    rule.description = element.attribute("Description").value();
    rule.source = element.attribute("Source").value();
    rule.module = element.attribute("Module").value();
    rule.file = element.attribute("File").value();
    rule.category = element.attribute("Category").value();
    rule.severity = element.attribute("Severity").as_int();
    rule.status = element.attribute("Status").as_int();
    rule.lifeStatus = element.attribute("LifeStatus").as_int();
    for (const pugi::xml_node& parameter : element.children("Parameter"))
        readParameter(parameter, rule);
}

void addText(pugi::xml_node parameter, const char* name, const char* text) {
    parameter.append_child(name).append_child(pugi::node_pcdata).set_value(text);
}

void addNumber(pugi::xml_node parameter, const char* name, long long number) {
    parameter.append_child(name).text().set(number);
}

void writeValues(const PeerRule& rule, int number, pugi::xml_node parameter) {
    if (number == 1) {
        for (const int count : rule.counts)
            addNumber(parameter, "Value", count);
    } else if (number == 2) {
        for (const double thickness : rule.thicknesses) {
            char digits[32] = {};
            std::to_chars(digits, digits + sizeof digits - 1, thickness, std::chars_format::fixed,
                          6);
            addText(parameter, "Value", digits);
        }
    } else if (number == 3) {
        for (const bool flag : rule.flags)
            addText(parameter, "Value", flag ? "1" : "0");
    } else if (number == 4) {
        for (const std::string& material : rule.materials)
            addText(parameter, "Value", material.c_str());
    } else if (number == 5) {
        for (const std::uint32_t colour : rule.colours)
            addNumber(parameter, "Value", colour);
    } else {
        static constexpr const char* kNames[] = {"Attribute1", "Attribute2", "Attribute3",
                                                 "Attribute4"};
        for (const std::vector<std::string>& record : rule.records) {
            pugi::xml_node value = parameter.append_child("Value");
            for (std::size_t i = 0; i < record.size() && i < std::size(kNames); ++i)
                value.append_attribute(kNames[i]) = record[i].c_str();
        }
    }
}

void writeRule(const PeerRule& rule, pugi::xml_node element) {
    element.append_attribute("Name") = rule.name.c_str();
    element.append_attribute("Status") = rule.status;
    element.append_attribute("LifeStatus") = rule.lifeStatus;
    element.append_attribute("Description") = rule.description.c_str();
    element.append_attribute("Source") = rule.source.c_str();
    element.append_attribute("Module") = rule.module.c_str();
    element.append_attribute("File") = rule.file.c_str();
    element.append_attribute("Severity") = rule.severity;
    element.append_attribute("Category") = rule.category.c_str();
    for (const PeerRule::Parameter& parameter : rule.parameters) {
        pugi::xml_node child = element.append_child("Parameter");
        child.append_attribute("Name") = parameter.name.c_str();
        child.append_attribute("Type") = parameter.number;
        child.append_attribute("Status") = parameter.status ? "1" : "0";
        addNumber(child, "Operator", parameter.op);
        addNumber(child, "ParameterType", parameter.type);
        writeValues(rule, parameter.number, child);
        addText(child, "Remarks", parameter.remarks.c_str());
    }
}

}  // namespace

PeerRules readByPugixml(const std::string& path) {
    pugi::xml_document document;
    document.load_file(path.c_str());
    PeerRules rules;
    for (const pugi::xml_node& element : document.document_element().children("Rule"))
        readRule(element, rules.emplace_back());
    return rules;
}

void writeByPugixml(const PeerRules& rules, const std::string& path) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("Rules");
    for (const PeerRule& rule : rules)
        writeRule(rule, root.append_child("Rule"));
    document.save_file(path.c_str(), "", pugi::format_raw);
}
