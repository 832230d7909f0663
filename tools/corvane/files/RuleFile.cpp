#include "files/RuleFile.h"

#include <corvane/app/StringResources.h>

#include "Text.h"

namespace {

CStringW placeText(const CStringW& path, QorLong line) {
    CStringW text = path;
    if (line > 0) text.AppendFormat(u":%d", line);
    return text;
}

}  // namespace

std::unique_ptr<RuleFile> RuleFile::load(const CStringW& path, Console& console) {
    const CStringW ruleName = corvane::ResourceText(corvane::resource::kRuleNode);
    if (ruleName.IsEmpty()) {
        console.report(path +
                       u": the language module of this installation, which holds the names "
                       u"in rule files, cannot be loaded; \"corvane doctor\" tells more");
        return nullptr;
    }
    std::unique_ptr<RuleFile> file(new RuleFile);
    file->path_ = path;
    file->root_ = file->document_.LoadFromFile(path);
    if (!file->root_) {
        console.report(faultText(path, corvane::LastXMLFault(file->document_)));
        return nullptr;
    }
    file->elements_.reset(file->root_->GetNodeList(ruleName));
    if (file->size() > 0) return file;
    CStringW text;
    text.Format(u"%s: no rule: its document element <%s> has no child <%s>", path,
                file->root_->GetNodeName(), ruleName);
    console.report(text);
    return nullptr;
}

CStringW RuleFile::place(QorLong index) const {
    return placeOf(corvane::XMLLine(element(index)));
}

CStringW RuleFile::placeOf(QorLong line) const {
    return placeText(path_, line);
}

CStringW faultText(const CStringW& path, const corvane::XMLFault& fault) {
    CStringW text = placeText(path, fault.line);
    if (fault.line > 0 && fault.column > 0) text.AppendFormat(u":%d", fault.column);
    text += u": ";
    return text + (fault.message.IsEmpty() ? CStringW(u"cannot be read") : fault.message);
}

CStringW attributeText(const QorXMLNode& element, std::uint32_t nameNumber) {
    CStringW text;
    element.GetAttributeValue(corvane::ResourceText(nameNumber), text);
    return text;
}
