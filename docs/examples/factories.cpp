#include <corvane/dfx/IContextFactory.h>
#include <corvane/dfx/ICriteriaFactory.h>
#include <corvane/dfx/Value.h>

namespace {

using Length = dfx::Value<double, dfx::IValue::TYPE_DOUBLE>;
constexpr int kThinnest = 1;

struct Site : dfx::IContextFactory {
    std::shared_ptr<dfx::IParameters> create(std::shared_ptr<dfx::IDocument>) override {
        const auto context = std::make_shared<dfx::Parameters<dfx::IParameters>>();
        context->addParameter(std::make_shared<Length>(kThinnest, 1.5));
        return context;
    }
};

struct WallCriteria : dfx::ICriteriaFactory {
    std::shared_ptr<dfx::Criteria> create(std::shared_ptr<dfx::IParameters> parameters,
                                          std::shared_ptr<dfx::IDocument>) override {
        const auto thinnest = parameters->getParameter(kThinnest);
        if (!thinnest) return nullptr;
        const auto criteria = std::make_shared<dfx::Criteria>();
        criteria->addParameter(thinnest);
        return criteria;
    }
};

}  // namespace

int main() {
    const auto document = std::make_shared<dfx::IDocument>();
    const auto context = Site().create(document);
    const auto criteria = WallCriteria().create(context, document);
    return criteria && criteria->getParameter(kThinnest) == context->getParameter(kThinnest) ? 0
                                                                                             : 1;
}
