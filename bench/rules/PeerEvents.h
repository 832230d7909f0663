#pragma once

#include <string>
#include <string_view>

#include "PeerRule.h"

/// Makes rules from the events of any parser.
class PeerEvents {
public:
    /// `next(name, value)` gives the attributes one after another, until it is false.
    template <typename Next>
    void startElement(std::string_view name, Next next) {
        std::string_view key;
        std::string_view value;
        text_.clear();
        if (name == "Rule") {
            PeerRule& rule = rules.emplace_back();
            while (next(key, value))
                ruleAttribute(rule, key, value);
        } else if (name == "Parameter" && !rules.empty()) {
            PeerRule::Parameter& parameter = rules.back().parameters.emplace_back();
            while (next(key, value))
                parameterAttribute(parameter, key, value);
        } else if (name == "Value") {
            record_ = false;
            while (next(key, value))
                recordAttribute(value);
        }
    }

    void characters(std::string_view piece) { text_ += piece; }

    void endElement(std::string_view name) {
        if (rules.empty() || rules.back().parameters.empty()) return;
        PeerRule::Parameter& parameter = rules.back().parameters.back();
        if (name == "Value") {
            if (!record_) rules.back().addValue(text_);
        } else if (name == "Operator") {
            parameter.op = toInt(text_);
        } else if (name == "ParameterType") {
            parameter.type = toInt(text_);
        } else if (name == "Remarks") {
            parameter.remarks = text_;
        }
    }

    PeerRules rules;

private:
    static void ruleAttribute(PeerRule& rule, std::string_view key, std::string_view value) {
        if (key == "Name")
            rule.name = value;
        else if (key == "Description")
            rule.description = value;
        else if (key == "Source")
            rule.source = value;
        else if (key == "Module")
            rule.module = value;
        else if (key == "File")
            rule.file = value;
        else if (key == "Category")
            rule.category = value;
        else if (key == "Severity")
            rule.severity = toInt(value);
        else if (key == "Status")
            rule.status = toInt(value);
        else if (key == "LifeStatus")
            rule.lifeStatus = toInt(value);
    }

    static void parameterAttribute(PeerRule::Parameter& parameter, std::string_view key,
                                   std::string_view value) {
        if (key == "Type")
            parameter.number = toInt(value);
        else if (key == "Name")
            parameter.name = value;
        else if (key == "Status")
            parameter.status = value == "1";
    }

    void recordAttribute(std::string_view value) {
        if (!record_) rules.back().records.emplace_back();
        record_ = true;
        rules.back().records.back().emplace_back(value);
    }

    std::string text_;
    bool record_ = false;
};
