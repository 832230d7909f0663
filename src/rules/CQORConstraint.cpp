#include <memory>
#include <utility>
#include <vector>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorParameter.h>

#include "rules/ParameterVisit.h"
#include "rules/StorageList.h"

namespace {

using corvane::rules::visitParameter;

// A storage of illegal kind owns nothing, so its clone may hold the same pointer.
std::unique_ptr<CQorParamStorage> cloneStorage(const CQorParamStorage& source) {
    auto clone = std::make_unique<CQorParamStorage>();
    clone->m_lId = source.m_lId;
    clone->m_bOption = source.m_bOption;
    clone->m_bStatus = source.m_bStatus;
    void* parameter = source.m_pParameter;
    visitParameter(&source, [&]<typename T>(const CQorParameter<T>& original) {
        auto copy = std::make_unique<CQorParameter<T>>(CStringW(), QorOperator_Default,
                                                       QorParamType_Plain, false);
        *copy = original;
        copy->m_lType = original.m_lType;
        copy->m_lMode = original.m_lMode;
        parameter = copy.release();
    });
    clone->m_Type = source.m_Type;
    clone->m_pParameter = parameter;
    return clone;
}

}  // namespace

CQORConstraint::CQORConstraint(QORConstraintType_e type, const CStringW& value, bool status)
    : m_Type(type), m_csValue(value), m_bStatus(status) {}

CQORConstraint::CQORConstraint(CQORConstraint& source)
    : m_Type(source.m_Type),
      m_Parameters(source.m_Parameters),
      m_csValue(source.m_csValue),
      m_bStatus(source.m_bStatus) {
    cloneStorages();
}

CQORConstraint::~CQORConstraint() {
    deleteStorages();
}

CQORConstraint& CQORConstraint::operator=(const CQORConstraint& source) {
    if (this == &source) return *this;
    m_Type = source.m_Type;
    m_csValue = source.m_csValue;
    m_bStatus = source.m_bStatus;
    deleteStorages();
    m_Parameters = source.m_Parameters;
    cloneStorages();
    return *this;
}

// Replaces storages that are still the source's by clones.
void CQORConstraint::cloneStorages() {
    std::vector<std::unique_ptr<CQorParamStorage>> clones;
    for (int i = 0; i < m_Parameters.GetSize(); ++i) {
        const CQorParamStorage* const storage = m_Parameters.GetAt(i);
        clones.push_back(storage ? cloneStorage(*storage) : nullptr);
    }
    for (int i = 0; i < m_Parameters.GetSize(); ++i)
        m_Parameters.GetAt(i) = clones[static_cast<std::size_t>(i)].release();
}

void CQORConstraint::deleteStorages() {
    for (int i = m_Parameters.GetSize(); i-- > 0;) {
        delete m_Parameters.GetAt(i);
        m_Parameters.RemoveAt(i);
    }
}

CQorParamStorage* CQORConstraint::FindParameterInArray(QorLong id) {
    return corvane::rules::findStorage(m_Parameters, id);
}
