#include <corvane/dfx/ISchemaFactory.h>
#include <corvane/dfx/SCContentDataList.h>
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

IContentData::~IContentData() = default;

SCContentDataList::SCContentDataList() : ISchema(kType) {}

SCContentDataList::~SCContentDataList() {
    for (const IContentData* const entry : entries_)
        delete entry;
    entries_.clear();
}

short SCContentDataList::type() const {
    return ISchema::type();
}

void SCContentDataList::addContentData(IContentData*& data) {
    entries_.push_back(data);
}

int SCContentDataList::getNumContentData() const {
    return static_cast<int>(entries_.size());
}

void SCContentDataList::getContentData(int index, IContentData*& data) {
    if (index >= 0 && index < getNumContentData()) data = entries_[static_cast<std::size_t>(index)];
}

namespace {

class SCFactory : public ISchemaFactory {
public:
    std::shared_ptr<ISchema> create(const short& type) override {
        switch (type) {
            case SCInfo::kType:
                return std::make_shared<SCInfo>();
            case SCContentDataList::kType:
                return std::make_shared<SCContentDataList>();
            default:
                return nullptr;
        }
    }
};

}  // namespace

ISchemaFactory::~ISchemaFactory() = default;

std::shared_ptr<ISchema> ISchemaFactory::create(const short&) {
    return nullptr;
}

std::shared_ptr<ISchemaFactory> createFactory() {
    return std::make_shared<SCFactory>();
}

}  // namespace dfx
