#include "files/ScriptRule.h"

#include <memory>

#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/xml/QorXMLNode.h>

#include "files/RuleFile.h"
#include "language/Messages.h"

namespace {

using namespace corvane::resource;

bool isRegistered(const QorXMLNode& engine) {
    CStringW path;
    return TypeLibDetails(CStringW())
        .FindTypeLibFile(path, attributeText(engine, kGuidAttr), attributeText(engine, kMajorAttr),
                         attributeText(engine, kMinorAttr), attributeText(engine, kLcidAttr));
}

std::unique_ptr<QorXMLNodeList> enginesOf(const QorXMLNode& rule) {
    const std::unique_ptr<QorXMLNode> engines(
        rule.SelectSingleNode(corvane::ResourceText(kEnginesNode)));
    return std::unique_ptr<QorXMLNodeList>(
        engines ? engines->GetNodeList(corvane::ResourceText(kEngineAttr)) : nullptr);
}

}  // namespace

void ScriptRule::PopulateParametersFromXML(QorXMLNode* node) {
    const std::size_t before = m_lstEngines.GetCount();
    ParametricScriptRule::PopulateParametersFromXML(node);
    hasDefinition_ = true;

    const std::unique_ptr<QorXMLNodeList> engines = enginesOf(*node);
    if (!engines) return;
    const QorLong count = engines->GetSize();
    if (m_lstEngines.GetCount() - before == static_cast<std::size_t>(count)) return;
    for (QorLong i = 0; i < count; ++i) {
        const QorXMLNode& engine = *(*engines)[i];
        if (isRegistered(engine)) continue;
        const CStringW guid = attributeText(engine, kGuidAttr);
        const CStringW name = attributeText(engine, kEngineAttr);
        missingEngines_.push_back(
            guid.IsEmpty() ? remark("the engine \"{0}\" has no GUID", name)
                           : remark("the engine \"{0}\" {1} is not registered", name, guid));
    }
}

bool leavesScriptFolder(const CStringW& script) {
    CStringW name = script;
    name.Replace(u'\\', u'/');
    if (name.Left(1) == u"/" || name.Find(u':') >= 0) return true;
    return (u"/" + name + u"/").Find(u"/../") >= 0;
}
