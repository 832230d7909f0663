#include <corvane/dfx/ISchemaFactory.h>
#include <corvane/dfx/SCContentDataList.h>
#include <corvane/dfx/SCInfo.h>

namespace dfx {
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
