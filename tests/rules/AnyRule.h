#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

/// A rule with whatever parameters a test gives it and the base's own behaviour.
class AnyRule : public CQorRule {
public:
    using CQorRule::operator=;
    void InitializeParamStorage() override {}
    QorLong Execute(QORICadSys*, const CQorData*&, QORResultSet*&) const override { return 0; }
    void PopulateParametersFromXML(QorXMLNode* node) override {
        CQorRule::PopulateParametersFromXML(node);
    }
    QorXMLNode* GetXML() override { return CQorRule::GetXML(); }
    void RunRule() override {}
    void UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) override {}
    bool UpdateRule(CQorRule* target) override { return CQorRule::UpdateRule(target); }
    void EditRule() override {}

    /// Adds a parameter, by default to the rule itself; the values become the storage's.
    template <typename T>
    CQorParameter<T>& add(Type_e type, QorLong id, std::initializer_list<T> values = {}, int op = 2,
                          int paramType = 0, CQorArray<CQorParamStorage*>* storages = nullptr) {
        CQorParamStorage* const storage = CreateParamStorageObject(
            type, id, QorOperator_e(op), QorParamType_e(paramType), true, false);
        (storages ? *storages : m_Parameters).Add(storage);
        auto* const parameter = static_cast<CQorParameter<T>*>(storage->m_pParameter);
        for (const T& value : values)
            parameter->m_Values.Add(value);
        return *parameter;
    }
};

/// A document that is the current one for a block.
struct CurrentDocument : QorXMLDocument {
    CurrentDocument() { SetXMLDoc(this); }
    ~CurrentDocument() { SetXMLDoc(nullptr); }
    /// Parses a text and gives its root, which stays the document's.
    QorXMLNode* load(CStringW text) { return LoadFromXMLString(text); }
};

/// The XML of a node that a writer handed out, which is deleted.
inline CStringW xmlOf(QorXMLNode* node) {
    return std::unique_ptr<QorXMLNode>(node)->GetXML();
}

template <typename T>
std::vector<T> valuesOf(const CQorParameter<T>& parameter) {
    return std::vector<T>(parameter.m_Values.begin(), parameter.m_Values.end());
}
