#include "WallRule.h"

#include <memory>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/xml/QorXMLNode.h>

#include "Texts.h"
#include "meshengine/Measures.h"

namespace partrules {

WallRule::WallRule() : PartRule("Minimum wall", "No wall is thinner than its material needs") {
    WallRule::InitializeParamStorage();
}

void WallRule::InitializeParamStorage() {
    addParameter(Type_Double, kThinnestWall);
    addParameter(Type_CStringPtr, kMaterial);
    thinnestWall_ = GetDoubleItem(kThinnestWall);
    material_ = GetCStringPtrItem(kMaterial);
}

void WallRule::PopulateParametersFromXML(QorXMLNode* node) {
    if (!node) return;
    PartRule::PopulateParametersFromXML(node);
    ClearConstraints();
    const std::unique_ptr<QorXMLNodeList> elements(node->GetNodeList(u"Constraint"));
    for (QorLong i = 0; i < elements->GetSize(); ++i)
        readConstraint((*elements)[i]);
}

void WallRule::readConstraint(QorXMLNode* element) {
    CQORConstraint* constraint = CreateConstraintObject(QORConstraint_Material, {}, true);
    m_Constraints.Add(constraint);
    const corvane::StringTableScope texts(kTexts);
    constraint->m_Parameters.Add(CreateParamStorageObject(
        Type_Double, kThinnestWall, QorOperator_Default, QorParamType_Plain, true, false));
    constraint->PopulateFromXML(element);
}

QorXMLNode* WallRule::GetXML() {
    std::unique_ptr<QorXMLNode> rule(PartRule::GetXML());
    if (!rule) return nullptr;
    for (CQORConstraint* constraint : m_Constraints) {
        const std::unique_ptr<QorXMLNode> element(constraint->GetXMLNode());
        rule->AppendNode(element.get());
    }
    return rule.release();
}

double WallRule::limitFor(const CStringW& material) const {
    const double own = firstValue(*thinnestWall_, 0.0);
    for (CQORConstraint* constraint : m_Constraints) {
        if (!constraint->m_bStatus || constraint->m_csValue.CompareNoCase(material) != 0) continue;
        const CQorParamStorage* limit = constraint->FindParameterInArray(kThinnestWall);
        return firstValue(*static_cast<const CQorParameter<double>*>(limit->m_pParameter), own);
    }
    return own;
}

void WallRule::check(const meshengine::Mesh& mesh, QORResultSet& results) const {
    const CStringW material = firstText(*material_);
    const double limit = limitFor(material);
    const std::optional<double> wall = meshengine::minimumWall(mesh);
    if (!wall) {
        results.AddFinding(u"the part has no wall to measure");
        return;
    }
    if (*wall >= limit) return;
    CStringW text;
    text.Format(u"the thinnest wall is about %.2f mm, %s needs %.2f mm", *wall,
                material.IsEmpty() ? CStringW(u"the rule") : material, limit);
    results.AddFinding(text);
}

}  // namespace partrules
