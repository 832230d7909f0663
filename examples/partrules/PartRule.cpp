#include "PartRule.h"

#include <corvane/host/QORICadSys.h>

#include "Texts.h"
#include "meshengine/MeshReader.h"

namespace partrules {

PartRule::PartRule(const char* name, const char* description)
    : CQorRule(name, description, "partrules") {}

void PartRule::addParameter(Type_e type, QorLong number, QorOperator_e op,
                            QorParamType_e paramType) {
    // The parameter's name comes from the table that is current while it is made.
    const corvane::StringTableScope texts(kTexts);
    m_Parameters.Add(CreateParamStorageObject(type, number, op, paramType, true, false));
}

QorLong PartRule::Execute(QORICadSys* cadSystem, const CQorData*&, QORResultSet*& results) const {
    const CStringW path = cadSystem ? cadSystem->GetActivePartPath() : CStringW();
    if (path.IsEmpty()) {
        results->AddFinding(u"no part is open");
        return 0;
    }
    const meshengine::ReadResult part = meshengine::readMesh(path.ToUtf8());
    if (part.mesh) {
        check(*part.mesh, *results);
    } else {
        results->AddFinding(CStringW::FromUtf8(part.error));
    }
    return 0;
}

void PartRule::PopulateParametersFromXML(QorXMLNode* node) {
    CQorRule::PopulateParametersFromXML(node);
}

QorXMLNode* PartRule::GetXML() {
    return CQorRule::GetXML();
}

bool PartRule::UpdateRule(CQorRule* target) {
    return CQorRule::UpdateRule(target);
}

CStringW firstText(const CQorParameter<CStringW*>& parameter) {
    const CStringW* text = firstValue<CStringW*>(parameter, nullptr);
    return text ? *text : CStringW();
}

}  // namespace partrules
