#include <corvane/base/ModuleExport.h>
#include <corvane/dfx/IOperatorFactory.h>
#include <corvane/dfx/Result.h>
#include <corvane/dfx/SCContentDataList.h>

#include "Samples.h"

namespace {

using namespace dfx;

struct Content : IContentData {
    std::shared_ptr<IVoidFunctor> note;
};

struct ModuleOperator : IOperator {
    // Files the functor 1 of the parameters in the document, and hands it back as value 2.
    std::shared_ptr<IResult> execute(std::shared_ptr<IParameters> parameters,
                                     std::shared_ptr<IResult> result) override {
        const auto functor = std::dynamic_pointer_cast<Functor>(parameters->getParameter(1));
        if (!functor) return IOperator::execute(parameters, result);
        auto content = std::make_unique<Content>();
        content->note = functor->get();
        IContentData* entry = content.release();
        const auto list = std::make_shared<SCContentDataList>();
        list->addContentData(entry);
        document->setSchema(list->type(), list);
        result = std::make_shared<Result>(true, 7);
        result->addParameter(std::make_shared<Functor>(2, functor->get()));
        return result;
    }
    std::shared_ptr<IDocument> document;
};

struct ModuleFactory : IOperatorFactory {
    std::shared_ptr<IOperator> create(std::shared_ptr<IParameters> parameters,
                                      std::shared_ptr<IDocument> document) override {
        if (!document) return IOperatorFactory::create(parameters, document);
        const auto made = std::make_shared<ModuleOperator>();
        made->document = document;
        return made;
    }
};

}  // namespace

/// Fills the set with a value of each held type, from key 0.
CORVANE_MODULE_EXPORT void AddValues(IParameters& set) {
    int key = 0;
    visitSamples([&](auto number, auto sample) {
        set.addParameter(
            std::make_shared<Value<decltype(sample), number()>>(key++, u"made", sample));
    });
}

CORVANE_MODULE_EXPORT void MakeFactory(std::shared_ptr<IOperatorFactory>& factory) {
    factory = std::make_shared<ModuleFactory>();
}
