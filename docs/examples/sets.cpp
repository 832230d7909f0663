#include <corvane/dfx/Parameters.h>
#include <corvane/dfx/Value.h>

namespace {

using Set = dfx::Parameters<dfx::IParameters>;
using Length = dfx::Value<double, dfx::IValue::TYPE_DOUBLE>;

constexpr int kThinnest = 1;
constexpr int kDeepest = 2;

double lengthOf(const dfx::IParameters& set, int key) {
    const auto found = std::dynamic_pointer_cast<Length>(set.getParameter(key));
    return found ? found->get() : 0;
}

}  // namespace

int main() {
    const auto site = std::make_shared<Set>();
    site->addParameter(std::make_shared<Length>(kThinnest, 1.5));
    site->addParameter(std::make_shared<Length>(kDeepest, 40));

    // What the part's set does not hold is looked up in the site's.
    Set part(site);
    part.addParameter(std::make_shared<Length>(kThinnest, 0.8));
    part.addParameter(std::make_shared<Length>(kThinnest, 0.9));  // The last one of a key stays.
    bool right = lengthOf(part, kThinnest) == 0.9 && lengthOf(part, kDeepest) == 40;

    // A copy shares the values, but not what is added or removed afterwards.
    const Set copy(part);
    part.clear();
    right = right && lengthOf(part, kThinnest) == 1.5 && lengthOf(copy, kThinnest) == 0.9;

    return right && !part.getParameter(3) ? 0 : 1;
}
