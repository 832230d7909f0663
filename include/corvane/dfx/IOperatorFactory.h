#pragma once

#include <memory>

#include <corvane/dfx/IDocument.h>
#include <corvane/dfx/IOperator.h>

namespace dfx {

/// Makes the operators of a module.
class CORVANE_EXPORT IOperatorFactory {
public:
    IOperatorFactory() = default;
    IOperatorFactory(const IOperatorFactory&) = default;
    IOperatorFactory& operator=(const IOperatorFactory&) = default;
    virtual ~IOperatorFactory();

    /// An operator for these parameters and this document, or an empty handle when the module has
    /// none. The body gives up its arguments and hands back an empty handle.
    virtual std::shared_ptr<IOperator> create(std::shared_ptr<IParameters> parameters,
                                              std::shared_ptr<IDocument> document) = 0;
};

}  // namespace dfx
