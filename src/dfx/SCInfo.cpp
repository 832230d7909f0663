#include <corvane/dfx/SCInfo.h>

namespace dfx {
namespace {

std::u16string textOf(const char16_t* text) {
    return text ? text : u"";
}

}  // namespace

SCInfo::SCInfo() : ISchema(kType), drillDatabaseUnit_(u"DocumentUnit") {}
SCInfo::~SCInfo() = default;

short SCInfo::type() const {
    return ISchema::type();
}

const char16_t* SCInfo::getPartFile() const {
    return partFile_.c_str();
}

void SCInfo::setPartFile(const char16_t* text) {
    partFile_ = textOf(text);
}

const char16_t* SCInfo::getRuleFile() const {
    return ruleFile_.c_str();
}

void SCInfo::setRuleFile(const char16_t* text) {
    ruleFile_ = textOf(text);
}

const char16_t* SCInfo::getResultFolder() const {
    return resultFolder_.c_str();
}

void SCInfo::setResultFolder(const char16_t* text) {
    resultFolder_ = textOf(text);
}

const char16_t* SCInfo::getDrillDatabaseUnit() const {
    return drillDatabaseUnit_.c_str();
}

void SCInfo::setDrillDatabaseUnit(const char16_t* text) {
    drillDatabaseUnit_ = textOf(text);
}

}  // namespace dfx
