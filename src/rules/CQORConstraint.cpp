#include <algorithm>
#include <memory>
#include <vector>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorParameter.h>

#include "rules/ParameterVisit.h"
#include "rules/StorageList.h"

namespace {

using corvane::rules::visitParameter;

using Storages = CQorArray<CQorParamStorage*>;

// A storage of illegal kind owns nothing, so its clone may hold the same pointer.
std::unique_ptr<CQorParamStorage> cloneStorage(const CQorParamStorage& source) {
    auto clone = std::make_unique<CQorParamStorage>();
    void* parameter = source.m_pParameter;
    visitParameter(&source, [&]<typename T>(const CQorParameter<T>& original) {
        auto copy = std::make_unique<CQorParameter<T>>(CStringW(), QorOperator_Default,
                                                       QorParamType_Plain, false);
        *copy = original;
        copy->m_lType = original.m_lType;
        copy->m_lMode = original.m_lMode;
        parameter = copy.release();
    });
    *clone = source;
    clone->m_pParameter = parameter;
    return clone;
}

Storages clonesOf(const Storages& storages) {
    std::vector<std::unique_ptr<CQorParamStorage>> owned;
    for (const CQorParamStorage* const storage : storages)
        owned.push_back(storage ? cloneStorage(*storage) : nullptr);
    Storages clones(storages);
    std::transform(owned.begin(), owned.end(), clones.begin(),
                   [](auto& clone) { return clone.release(); });
    return clones;
}

}  // namespace

CQORConstraint::CQORConstraint(QORConstraintType_e type, const CStringW& value, bool status)
    : m_Type(type), m_csValue(value), m_bStatus(status) {}

CQORConstraint::CQORConstraint(CQORConstraint& source)
    : CQORConstraint(source.m_Type, source.m_csValue, source.m_bStatus) {
    m_Parameters = clonesOf(source.m_Parameters);
}

CQORConstraint::~CQORConstraint() {
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
}

CQORConstraint& CQORConstraint::operator=(const CQORConstraint& source) {
    if (this == &source) return *this;
    const Storages clones = clonesOf(source.m_Parameters);
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
    m_Parameters = clones;
    m_Type = source.m_Type;
    m_csValue = source.m_csValue;
    m_bStatus = source.m_bStatus;
    return *this;
}

CQorParamStorage* CQORConstraint::FindParameterInArray(QorLong id) {
    return corvane::rules::findStorage(m_Parameters, id);
}
