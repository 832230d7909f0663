#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <corvane/text/CStringW.h>

namespace qor_db {

/// A binary value.
using Bytes = std::vector<std::byte>;

/// One typed value of a row, or a parameter of a query: null, a 64-bit integer, a double, text or
/// bytes.
class Value {
public:
    Value() = default;
    ///@{
    /// A value of that kind; a null pointer to text is an empty text.
    Value(int value) : content_(std::int64_t{value}) {}
    Value(std::int64_t value) : content_(value) {}
    Value(double value) : content_(value) {}
    Value(CStringW value) : content_(std::move(value)) {}
    Value(const char16_t* value) : content_(CStringW(value)) {}
    Value(std::u16string_view value) : content_(CStringW(value)) {}
    Value(Bytes value) : content_(std::move(value)) {}
    ///@}
    /// Text and flags would turn into numbers unseen.
    Value(bool) = delete;
    Value(const char*) = delete;

    bool isNull() const { return content_.index() == 0; }  ///< True for null.
    ///@{
    /// The held value, valid as long as the object; null when it is of another kind.
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&content_); }
    const double* real() const { return std::get_if<double>(&content_); }
    const CStringW* text() const { return std::get_if<CStringW>(&content_); }
    const Bytes* bytes() const { return std::get_if<Bytes>(&content_); }
    ///@}

    /// An integer or a double as a double; nothing for the other kinds.
    std::optional<double> number() const {
        if (const std::int64_t* whole = integer()) return static_cast<double>(*whole);
        if (const double* value = real()) return *value;
        return std::nullopt;
    }

    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<std::monostate, std::int64_t, double, CStringW, Bytes> content_;
};

/// One row of a result, a value for each column.
class Row {
public:
    Row() = default;
    /// One value for each column.
    explicit Row(std::vector<Value> values) : values_(std::move(values)) {}

    std::size_t size() const { return values_.size(); }  ///< Number of columns.
    /// The value of a column from 0; null when there is no such column.
    const Value& operator[](std::size_t column) const {
        static const Value kNull;
        return column < values_.size() ? values_[column] : kNull;
    }

    ///@{
    /// The integer or the number of a column; nothing when the value is none.
    std::optional<std::int64_t> integer(std::size_t column) const {
        const std::int64_t* value = (*this)[column].integer();
        return value ? std::optional(*value) : std::nullopt;
    }
    std::optional<double> number(std::size_t column) const { return (*this)[column].number(); }
    ///@}
    /// The text of a column; empty when the value is none.
    CStringW text(std::size_t column) const {
        const CStringW* value = (*this)[column].text();
        return value ? *value : CStringW();
    }

private:
    std::vector<Value> values_;
};

}  // namespace qor_db
