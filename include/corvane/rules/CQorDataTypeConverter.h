#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string_view>

#include <corvane/base/Export.h>
#include <corvane/platform/OleDateTime.h>
#include <corvane/rules/QORCustomRuleData.h>
#include <corvane/text/CStringW.h>

/// Turns values of the parameter kinds into the text that a rule file holds, and back. The text is
/// the same in every process locale. Objects have no fields.
///
/// The whole-number operations are templates over every 32-bit integer type, because `int` and
/// QorLong are one type on some platforms and two on others.
class CORVANE_EXPORT CQorDataTypeConverter {
public:
    /// True for the types of the whole-number operations.
    template <typename T>
    static constexpr bool kWholeNumber = std::integral<T> && sizeof(T) == sizeof(std::int32_t);

    /// Reads a value. White space before and anything after a number are ignored. The result
    /// says whether there was a value; without one, `value` is untouched.
    template <typename T>
    requires(kWholeNumber<T>) bool TextToValue(std::u16string_view text, T& value) const {
        std::int32_t number = 0;
        if (!scan(text, number)) return false;
        value = static_cast<T>(number);
        return true;
    }
    /// False for "0" and true for any other text.
    bool TextToValue(std::u16string_view text, bool& value) const;
    /// Also reads "inf", "-inf", "nan" and "-nan", as ValueToText writes them; white space aside,
    /// the text is then nothing but the word.
    bool TextToValue(std::u16string_view text, double& value) const;
    /// A new text, owned by the caller.
    bool TextToValue(std::u16string_view text, CStringW*& value) const;
    ///@{
    /// Dates and records have no text: these do nothing.
    bool TextToValue(std::u16string_view, COleDateTime*&) const { return false; }
    bool TextToValue(std::u16string_view, QORCustomRuleData*&) const { return false; }
    ///@}

    ///@{
    /// The text of a value: whole numbers in decimal, doubles with six places after the point. A
    /// null pointer and the kinds that have no text give an empty one.
    template <typename T>
    requires(kWholeNumber<T>) CStringW ValueToText(T value)
    const {
        if constexpr (std::is_signed_v<T>) {
            return print(static_cast<std::int32_t>(value));
        } else {
            return print(static_cast<std::uint32_t>(value));
        }
    }
    CStringW ValueToText(bool value) const;
    CStringW ValueToText(double value) const;
    CStringW ValueToText(const CStringW* value) const;
    CStringW ValueToText(const COleDateTime*) const { return {}; }
    CStringW ValueToText(const QORCustomRuleData*) const { return {}; }
    ///@}

    ///@{
    /// Makes the record the value for the one kind that is a record; the caller then owns it. For
    /// all other kinds the record is released and `value` untouched.
    void AttributesToValue(std::unique_ptr<QORCustomRuleData> record,
                           QORCustomRuleData*& value) const {
        value = record.release();
    }
    template <typename T>
    void AttributesToValue(std::unique_ptr<QORCustomRuleData>, T&) const {}
    ///@}

    /// A copy of a record's texts; empty for a null record and for all other kinds.
    template <typename T>
    QORCustomRuleData ValueToAttributes(const T& value) const {
        if constexpr (std::convertible_to<T, const QORCustomRuleData*>) {
            if (value) return *value;
        }
        return {};
    }

private:
    static bool scan(std::u16string_view text, std::int32_t& number);
    static CStringW print(std::int32_t number);
    static CStringW print(std::uint32_t number);
};
