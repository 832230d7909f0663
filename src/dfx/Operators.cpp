#include <corvane/dfx/IContextFactory.h>
#include <corvane/dfx/ICriteriaFactory.h>
#include <corvane/dfx/IOperatorFactory.h>

namespace dfx {

IOperator::~IOperator() = default;
IOperatorFactory::~IOperatorFactory() = default;
IContextFactory::~IContextFactory() = default;
ICriteriaFactory::~ICriteriaFactory() = default;

std::shared_ptr<IResult> IOperator::execute(std::shared_ptr<IParameters>,
                                            std::shared_ptr<IResult>) {
    return nullptr;
}

std::shared_ptr<IOperator> IOperatorFactory::create(std::shared_ptr<IParameters>,
                                                    std::shared_ptr<IDocument>) {
    return nullptr;
}

}  // namespace dfx
