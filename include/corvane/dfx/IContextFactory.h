#pragma once

#include <memory>

#include <corvane/dfx/IDocument.h>
#include <corvane/dfx/IParameters.h>

namespace dfx {

/// Makes the context of a document: the values that hold for all operators that work on it. A set
/// that is built over the context adds to it and shadows it.
class CORVANE_EXPORT IContextFactory {
public:
    IContextFactory() = default;
    IContextFactory(const IContextFactory&) = default;
    IContextFactory& operator=(const IContextFactory&) = default;
    virtual ~IContextFactory();

    /// The context, or an empty handle when the module has none for this document.
    virtual std::shared_ptr<IParameters> create(std::shared_ptr<IDocument> document) = 0;
};

}  // namespace dfx
