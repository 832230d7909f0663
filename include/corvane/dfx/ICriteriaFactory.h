#pragma once

#include <memory>

#include <corvane/dfx/Criteria.h>
#include <corvane/dfx/IDocument.h>

namespace dfx {

/// Makes the criteria by which an operator works.
class CORVANE_EXPORT ICriteriaFactory {
public:
    ICriteriaFactory() = default;
    ICriteriaFactory(const ICriteriaFactory&) = default;
    ICriteriaFactory& operator=(const ICriteriaFactory&) = default;
    virtual ~ICriteriaFactory();

    /// The criteria that follow from these parameters and this document, or an empty handle when
    /// the module has none for them.
    virtual std::shared_ptr<Criteria> create(std::shared_ptr<IParameters> parameters,
                                             std::shared_ptr<IDocument> document) = 0;
};

}  // namespace dfx
