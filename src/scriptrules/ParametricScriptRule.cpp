#include <map>
#include <memory>
#include <optional>

#include <corvane/scriptrules/ParametricScriptRule.h>

#include "rules/ParameterElement.h"
#include "rules/RuleElement.h"
#include "rules/Storages.h"
#include "scriptrules/ScriptParameters.h"
#include "xml/ElementAccess.h"

namespace corvane {
namespace {

using Storages = CQorArray<CQorParamStorage*>;
using xml::ElementView;
namespace name = rules::name;

// Reads parameters whose kind only their texts tell. What is read replaces what was there.
class TextReader {
public:
    TextReader(CQorRule& rule, Storages& storages) : rule_(rule), storages_(storages) {
        for (CQorParamStorage* const storage : storages) {
            if (storage) known_.try_emplace(storage->m_lId, storage);
        }
    }

    // Calls `before` with each storage that had a value before its element is read.
    template <typename Before>
    void read(ElementView parent, Before before) {
        std::set<QorLong> seen;
        for (const ElementView element : xml::ChildrenNamed(parent, name::kParameter)) {
            const std::optional<QorLong> number = rules::parameterNumber(element);
            if (!number || !seen.insert(*number).second) continue;
            CQorParamStorage& storage = storageOf(*number);
            rules::visitParameter(&storage, [&](auto& parameter) {
                before(*number, parameter.m_Values.GetSize());
                readOne(element, parameter);
            });
        }
    }

private:
    CQorParamStorage& storageOf(QorLong number) {
        const auto [place, isNew] = known_.try_emplace(number, nullptr);
        if (isNew) {
            place->second = rule_.CreateParamStorageObject(
                Type_CStringPtr, number, QorOperator_Default, QorParamType_Plain, true, false);
            storages_.Add(place->second);
            rules::parameterOf<CStringW*>(*place->second).m_csName.Empty();
        }
        return *place->second;
    }

    template <typename T>
    static void readOne(ElementView element, CQorParameter<T>& parameter) {
        const QorOperator_e op = parameter.m_Operator;
        const QorParamType_e type = parameter.m_ParamType;
        clear(parameter);
        ParameterReader reader(element.element());
        parameter.PopulateFromXML(reader);
        if (!element.child(name::kOperator)) parameter.m_Operator = op;
        if (!element.child(name::kParameterType)) parameter.m_ParamType = type;
        if (parameter.m_csName.IsEmpty())
            parameter.m_csName = element.attribute(name::kName).value_or(u"");
        std::u16string buffer;
        if (const ElementView remarks = element.child(name::kRemarks))
            parameter.m_csRemarks = CStringW(remarks.text(buffer));
    }

    template <typename T>
    static void clear(CQorParameter<T>& parameter) {
        for (int i = parameter.m_Values.GetSize(); i-- > 0;) {
            if constexpr (kClonedValue<T>) delete parameter.m_Values.GetAt(i);
            parameter.m_Values.RemoveAt(i);
        }
    }

    CQorRule& rule_;
    Storages& storages_;
    std::map<QorLong, CQorParamStorage*> known_;
};

// What tells the constraints of a rule apart: their materials, case ignored.
CStringW keyOf(const CQORConstraint& constraint) {
    CStringW key = constraint.m_csValue;
    return key.MakeLower();
}

std::unique_ptr<CQORConstraint> readConstraint(CQorRule& rule, ElementView element) {
    auto constraint = std::make_unique<CQORConstraint>(QORConstraintType_e(0), CStringW(), true);
    QorXMLNode node = element.node();
    QorXMLNode* pointer = &node;
    constraint->PopulateFromXML(pointer);
    TextReader(rule, constraint->m_Parameters).read(element, [](QorLong, int) {});
    return constraint;
}

}  // namespace

ParametricScriptRule::ParametricScriptRule() = default;

ParametricScriptRule::~ParametricScriptRule() {
    ClearConstraints();
}

bool ParametricScriptRule::PopulateScriptRule(QorXMLNode* ruleNode) {
    if (!ConcreteQORRule::PopulateScriptRule(ruleNode)) return false;
    TextReader(*this, m_Parameters)
        .read(ElementView(*ruleNode), [this](QorLong number, int valueCount) {
            if (valueCount > 1) lists_.insert(number);
        });
    takeConstraints(*ruleNode);
    return true;
}

void ParametricScriptRule::PopulateParametersFromXML(QorXMLNode* node) {
    ConcreteQORRule::PopulateParametersFromXML(node);
    if (!node) return;
    lists_.clear();
    TextReader(*this, m_Parameters).read(ElementView(*node), [](QorLong, int) {});
    ClearConstraints();
    takeConstraints(*node);
}

void ParametricScriptRule::takeConstraints(const QorXMLNode& element) {
    std::vector<std::unique_ptr<CQORConstraint>> taken;
    std::set<CStringW> materials;
    for (const ElementView child : xml::ChildrenNamed(ElementView(element), name::kConstraint)) {
        taken.push_back(readConstraint(*this, child));
        materials.insert(keyOf(*taken.back()));
    }
    CQorArray<CQORConstraint*> kept;
    for (CQORConstraint* const constraint : m_Constraints) {
        if (constraint && materials.contains(keyOf(*constraint))) {
            delete constraint;
        } else {
            kept.Add(constraint);
        }
    }
    for (auto& constraint : taken)
        kept.Add(constraint.release());
    m_Constraints = kept;
}

QorXMLNode* ParametricScriptRule::GetXML() {
    std::unique_ptr<QorXMLNode> element(ConcreteQORRule::GetXML());
    if (!element) return nullptr;
    rules::writeConstraints(*element, m_Constraints);
    return element.release();
}

std::vector<ScriptParameter> ParametricScriptRule::GetScriptParameters(
    const CStringW& material) const {
    return scriptrules::scriptParameters(m_Parameters, m_Constraints, material, lists_);
}

}  // namespace corvane
