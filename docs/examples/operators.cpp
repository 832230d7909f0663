#include <corvane/dfx/IOperatorFactory.h>
#include <corvane/dfx/Result.h>
#include <corvane/dfx/Value.h>

namespace {

using Numbers = dfx::Value<std::vector<double>, dfx::IValue::TYPE_DOUBLE_VECTOR>;
using Sum = dfx::Value<double, dfx::IValue::TYPE_DOUBLE>;
constexpr int kNumbers = 1, kSum = 2, kNothingToAdd = 1;

struct Adder : dfx::IOperator {
    std::shared_ptr<dfx::IResult> execute(std::shared_ptr<dfx::IParameters> parameters,
                                          std::shared_ptr<dfx::IResult>) override {
        const auto numbers = std::dynamic_pointer_cast<Numbers>(parameters->getParameter(kNumbers));
        if (!numbers) return std::make_shared<dfx::Result>(false, kNothingToAdd);
        double sum = 0;
        for (const double number : numbers->get())
            sum += number;
        const auto result = std::make_shared<dfx::Result>(true, 0);
        result->addParameter(std::make_shared<Sum>(kSum, sum));
        return result;
    }
};

}  // namespace

int main() {
    const auto parameters = std::make_shared<dfx::Parameters<dfx::IParameters>>();
    Adder adder;
    const auto failed = adder.execute(parameters, nullptr);

    parameters->addParameter(std::make_shared<Numbers>(kNumbers, std::vector{1.5, 2.5}));
    const auto result = adder.execute(parameters, nullptr);
    const auto sum = std::dynamic_pointer_cast<Sum>(result->getParameter(kSum));

    const bool right = !failed->status() && failed->errorCode() == kNothingToAdd &&
                       result->status() && sum && sum->get() == 4;
    return right ? 0 : 1;
}
