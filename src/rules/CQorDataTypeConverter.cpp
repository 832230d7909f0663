#include <limits>
#include <optional>
#include <utility>

#include <corvane/rules/CQorDataTypeConverter.h>

#include "rules/NumberText.h"
#include "rules/ParameterElement.h"
#include "text/Numbers.h"

using corvane::text::ScanResult;
namespace name = corvane::rules::name;

namespace {

// The words that ValueToText has for values without digits. They count whole only, so that a text
// like "info" is no number.
std::optional<double> valueOfWord(std::u16string_view text) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr std::pair<std::u16string_view, double> kWords[] = {
        {u"inf", kInfinity}, {u"-inf", -kInfinity}, {u"nan", kNaN}, {u"-nan", -kNaN}};
    const std::u16string_view word = corvane::rules::trimmed(text);
    for (const auto& [known, value] : kWords) {
        if (word == known) return value;
    }
    return std::nullopt;
}

}  // namespace

bool CQorDataTypeConverter::scan(std::u16string_view text, std::int32_t& number) {
    return corvane::text::scanInt32(text, number) == ScanResult::Matched;
}

CStringW CQorDataTypeConverter::print(std::int32_t number) {
    return corvane::text::printInt32(number);
}

CStringW CQorDataTypeConverter::print(std::uint32_t number) {
    return corvane::text::printUInt32(number);
}

bool CQorDataTypeConverter::TextToValue(std::u16string_view text, bool& value) const {
    value = text != name::kFalse;
    return true;
}

bool CQorDataTypeConverter::TextToValue(std::u16string_view text, double& value) const {
    if (corvane::text::scanDouble(text, value) == ScanResult::Matched) return true;
    const std::optional<double> word = valueOfWord(text);
    if (word) value = *word;
    return word.has_value();
}

bool CQorDataTypeConverter::TextToValue(std::u16string_view text, CStringW*& value) const {
    value = std::make_unique<CStringW>(text).release();
    return true;
}

CStringW CQorDataTypeConverter::ValueToText(bool value) const {
    return value ? name::kTrue : name::kFalse;
}

CStringW CQorDataTypeConverter::ValueToText(double value) const {
    return corvane::text::printDouble(value);
}

CStringW CQorDataTypeConverter::ValueToText(const CStringW* value) const {
    return value ? *value : CStringW();
}
