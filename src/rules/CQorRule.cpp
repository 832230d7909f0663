#include <cstddef>
#include <memory>

#include <corvane/app/StringResources.h>
#include <corvane/rules/CQORFrameWrkUtils.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "app/Language.h"
#include "rules/ParameterMemory.h"
#include "rules/RuleCategory.h"
#include "rules/RuleElement.h"
#include "rules/Storages.h"

namespace rules = corvane::rules;
namespace resource = corvane::resource;

namespace {

using Storages = CQorArray<CQorParamStorage*>;

template <typename T>
CQorParameter<T>* item(const CQorArray<CQorParamStorage*>& storages, QorLong id, Type_e type) {
    const CQorParamStorage* const storage = rules::findIndexed(storages, id);
    if (!storage || storage->m_Type != type) return nullptr;
    return static_cast<CQorParameter<T>*>(storage->m_pParameter);
}

// A parameter in the memory of its kind. Whoever deletes it does so by the virtual destructor,
// which knows where it lies.
template <typename T>
class OwnParameter final : public CQorParameter<T> {
public:
    using CQorParameter<T>::CQorParameter;
    using CQorParameter<T>::operator=;
    static void* operator new(std::size_t) {
        static_assert(sizeof(OwnParameter) <= rules::kLargestParameter);
        static_assert(alignof(OwnParameter) <= alignof(void*));
        return rules::allocateParameter();
    }
    static void operator delete(void* place) noexcept { rules::freeParameter(place); }
};

// Calls `use` with each parameter of `own` and the one at the same place in `other`. Two rules of
// one class agree in both lists; where they don't, the parameter has no counterpart.
template <typename Use>
void visitPairs(const Storages& own, const Storages& other, Use use) {
    for (int i = 0; i < own.GetSize(); ++i) {
        const CQorParamStorage* const counterpart = i < other.GetSize() ? other.GetAt(i) : nullptr;
        const CQorParamStorage* const storage = own.GetAt(i);
        const bool legal =
            rules::visitParameter(storage, [&]<typename T>(CQorParameter<T>& parameter) {
                if (!counterpart || counterpart->m_Type != storage->m_Type) return;
                if (counterpart->m_pParameter) use(parameter, rules::parameterOf<T>(*counterpart));
            });
        if (!legal) rules::reportIllegalParameter();
    }
}

}  // namespace

CQorRule::CQorRule() : m_RuleLinks(CStringW(), QorOperator_Default, QorParamType_Plain, false) {}

CQorRule::CQorRule(const char* name, const char* description, const char* source) : CQorRule() {
    m_csRuleName = CStringW(name);
    m_csRuleDisplayName = m_csRuleName;
    m_csRuleDescription = CStringW(description);
    m_csRuleSource = CStringW(source);
}

CQorRule::~CQorRule() {
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
}

QorLong CQorRule::Import(QorXMLDocument*, QorXMLNode*, const CQorData*&, QORICadSys*,
                         QORResultSet*&) const {
    constexpr QorLong kNotImported = -7;
    return kNotImported;
}

void CQorRule::SetRuleStatusForAssemblyModel(int) {}

bool CQorRule::ValidateInputData() {
    return true;
}

CStringW CQorRule::GetRequiredInputData() const {
    return {};
}

void CQorRule::SetInputData(CStringW&) {}

void CQorRule::SetPreExecutionData(CQorData*&) {}

int CQorRule::GetRuleId() const {
    return -1;
}

int CQorRule::GetMaterialStatus() const {
    return 0;
}

void CQorRule::PostPopulate() {
    for (CStringW* const text : {&m_csRuleSource, &m_csRuleFileName})
        text->MakeLower().Replace(u"proe", u"");
}

int CQorRule::GetCutterStatus() const {
    return 0;
}

void CQorRule::Heal(QORICadSys*, const CQorData*&, const QORResultSet*&) const {}

CStringW CQorRule::GetRuleModuleName() const {
    return m_csRuleModuleName;
}

void CQorRule::SetRuleModuleName(CStringW& name) {
    m_csRuleModuleName = name;
}

int CQorRule::GetRuleCategoryEnum() {
    return rules::categoryOf(m_csRuleCategory);
}

void CQorRule::SetRuleCategory(QORRuleCategory_e category) {
    m_csRuleCategory = rules::categoryText(category);
}

void CQorRule::SetRuleCategory(CStringW& category) {
    m_csRuleCategory = category;
}

CQorParamStorage* CQorRule::FindParameterInArray(QorLong id) {
    return rules::findIndexed(m_Parameters, id);
}

CQorParameter<int>* CQorRule::GetIntItem(QorLong id) const {
    return item<int>(m_Parameters, id, Type_Int);
}

CQorParameter<QorLong>* CQorRule::GetLongItem(QorLong id) const {
    return item<QorLong>(m_Parameters, id, Type_Long);
}

CQorParameter<bool>* CQorRule::GetBoolItem(QorLong id) const {
    return item<bool>(m_Parameters, id, Type_Bool);
}

CQorParameter<double>* CQorRule::GetDoubleItem(QorLong id) const {
    return item<double>(m_Parameters, id, Type_Double);
}

CQorParameter<CStringW*>* CQorRule::GetCStringPtrItem(QorLong id) const {
    return item<CStringW*>(m_Parameters, id, Type_CStringPtr);
}

CQorParameter<COleDateTime*>* CQorRule::GetCOleDateTimePtrItem(QorLong id) const {
    return item<COleDateTime*>(m_Parameters, id, Type_COleDateTimePtr);
}

CQorParameter<QorULong>* CQorRule::GetColorRefItem(QorLong id) const {
    return item<QorULong>(m_Parameters, id, Type_ColorRef);
}

CQorParamStorage* CQorRule::CreateParamStorageObject(Type_e type, QorLong id, QorOperator_e op,
                                                     QorParamType_e paramType, bool status,
                                                     bool option) {
    auto storage = std::make_unique<CQorParamStorage>();
    storage->m_lId = id;
    storage->m_bOption = option;
    storage->m_bStatus = status;
    const bool legal = rules::visitKind(type, [&]<typename T>(std::type_identity<T>) {
        const auto name = corvane::FindTableText(corvane::app::currentStringTable(),
                                                 static_cast<std::uint32_t>(id));
        auto parameter = std::make_unique<OwnParameter<T>>(name, op, paramType, status);
        parameter->m_lType = id;
        storage->m_Type = type;
        storage->m_pParameter = parameter.release();
    });
    if (!legal) rules::reportIllegalParameter();
    return storage.release();
}

CQORConstraint* CQorRule::CreateConstraintObject(QORConstraintType_e type, CStringW value,
                                                 bool status) {
    return std::make_unique<CQORConstraint>(type, value, status).release();
}

void CQorRule::ClearConstraints() {
    for (int i = m_Constraints.GetSize(); i-- > 0;) {
        delete m_Constraints.GetAt(i);
        m_Constraints.RemoveAt(i);
    }
}

CQorRule& CQorRule::operator=(CQorRule* source) {
    if (!source || source == this) return *this;
    m_csRuleName = source->m_csRuleName;
    m_csRuleDisplayName = source->m_csRuleDisplayName;
    m_lRuleSeverity = source->m_lRuleSeverity;
    m_csRuleDescription = source->m_csRuleDescription;
    m_csRuleSource = source->m_csRuleSource;
    m_csRuleBaseDescription = source->m_csRuleBaseDescription;
    m_lRuleLifeStatus = source->m_lRuleLifeStatus;
    m_lRuleKind = source->m_lRuleKind;
    m_RuleTag = source->m_RuleTag;
    m_csRuleCategory = source->m_csRuleCategory;
    m_csRuleModuleName = source->m_csRuleModuleName;
    m_csRuleFileName = source->m_csRuleFileName;
    m_csModuleFileName = source->m_csModuleFileName;
    m_lstEngines = source->m_lstEngines;
    m_lstDBModules = source->m_lstDBModules;
    m_lstCategories = source->m_lstCategories;
    visitPairs(m_Parameters, source->m_Parameters,
               [](auto& parameter, const auto& counterpart) { parameter = counterpart; });
    return *this;
}

bool CQorRule::UpdateRule(CQorRule* target) {
    if (!target) return false;
    target->m_csRuleDisplayName = m_csRuleDisplayName;
    target->m_csRuleName = m_csRuleName;
    target->m_lRuleSeverity = m_lRuleSeverity;
    target->m_csRuleDescription = m_csRuleDescription;
    target->m_csRuleSource = m_csRuleSource;
    bool differs = false;
    visitPairs(m_Parameters, target->m_Parameters, [&](const auto& parameter, auto& counterpart) {
        if (parameter.UpdateTarget(counterpart)) differs = true;
    });
    return differs;
}

void CQorRule::PopulateParametersFromXML(QorXMLNode* node) {
    if (!node) return;
    const auto element = rules::requiredElement(*node);
    rules::readRuleTexts(element, *this);
    m_lRuleSeverity = rules::readNumber(element, resource::kRuleSeverityAttr);
    m_csRuleCategory = rules::readTextOrEmpty(element, resource::kRuleCategoryAttr);
    if (!rules::readParameters(element, m_Parameters, Type_CustomRuleData))
        return rules::reportIllegalParameter();
    m_bPopulated = true;
}

QorXMLNode* CQorRule::GetXML() {
    if (!g_pXMLDoc) return nullptr;
    auto element = rules::makeRuleElement(*this, resource::kRuleCategoryAttr);
    rules::writeParameters(*element, m_Parameters, Type_CustomRuleData,
                           rules::reportIllegalParameter);
    return element.release();
}

QorXMLNode* CQorRule::CreateRuleNode(QorXMLDocument* document, QorXMLNode* parent) const {
    if (!document || !parent) return nullptr;
    return parent->AppendNode(CQORFrameWrkUtils::GetStringWithoutSpaces(m_csRuleName), document);
}
