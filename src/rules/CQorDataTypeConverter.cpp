#include <corvane/rules/CQorDataTypeConverter.h>

#include "rules/ParameterNames.h"
#include "text/Print.h"
#include "text/Scan.h"

using corvane::text::ScanResult;
namespace name = corvane::rules::name;

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
    return corvane::text::scanDouble(text, value) == ScanResult::Matched;
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
