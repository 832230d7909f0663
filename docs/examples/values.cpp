#include <corvane/dfx/Value.h>

namespace {

using Length = dfx::Value<double, dfx::IValue::TYPE_DOUBLE>;
using Names = dfx::Value<std::vector<std::u16string>, dfx::IValue::TYPE_STRING_VECTOR>;

constexpr int kLength = 7;

}  // namespace

int main() {
    const std::shared_ptr<dfx::IValue> value =
        std::make_shared<Length>(kLength, u"the longest edge", 12.5);

    // Only the right type reads it.
    const auto length = std::dynamic_pointer_cast<Length>(value);
    const auto names = std::dynamic_pointer_cast<Names>(value);

    // A copy is a value of its own.
    Length copy(*length);
    copy.get() += 1;

    const bool right = length && !names && length->get() == 12.5 && copy.get() == 13.5 &&
                       value->key() == kLength && value->type() == dfx::IValue::TYPE_DOUBLE &&
                       value->description() == std::u16string_view(u"the longest edge");
    return right ? 0 : 1;
}
