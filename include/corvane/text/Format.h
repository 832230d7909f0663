#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include <corvane/base/Export.h>

class CStringW;

namespace corvane {

/// One argument of a format: a whole number, a floating-point number, 16-bit or 8-bit text, or a
/// pointer. It refers to the text that it was made from and lives for one call.
class FormatArgument {
public:
    /// A whole number of any type.
    struct Integer {
        std::uint64_t bits;  ///< Sign-extended to 64 bits when the type is signed.
        unsigned width;      ///< Bytes of the type that was passed.
        bool isSigned;       ///< The type is signed.
    };
    /// What an argument is one of.
    using Value = std::variant<Integer, double, std::u16string_view, std::string_view, const void*>;

    ///@{
    /// Takes the value, or refers to the text. A null pointer to text prints as "(null)".
    template <typename T>
    requires std::integral<T> || std::is_enum_v<T> FormatArgument(T value)
        : value_(integer(value)) {}
    FormatArgument(double value) : value_(value) {}
    FormatArgument(std::u16string_view text) : value_(text) {}
    FormatArgument(const std::u16string& text) : value_(std::u16string_view(text)) {}
    FormatArgument(std::string_view text) : value_(text) {}
    FormatArgument(const std::string& text) : value_(std::string_view(text)) {}
    CORVANE_EXPORT FormatArgument(const CStringW& text);
    FormatArgument(const char16_t* text)
        : value_(text ? std::u16string_view(text) : std::u16string_view(u"(null)")) {}
    FormatArgument(const char* text)
        : value_(text ? std::string_view(text) : std::string_view("(null)")) {}
    FormatArgument(const void* pointer) : value_(pointer) {}
    ///@}

    const Value& value() const { return value_; }  ///< The argument.

private:
    template <typename T>
    static Integer integer(T value) {
        if constexpr (std::is_enum_v<T>) {
            return integer(static_cast<std::underlying_type_t<T>>(value));
        } else if constexpr (std::is_signed_v<T>) {
            return {static_cast<std::uint64_t>(static_cast<std::int64_t>(value)), sizeof(T), true};
        } else {
            return {static_cast<std::uint64_t>(value), sizeof(T), false};
        }
    }

    Value value_;
};

/// Appends `format` to `out` with its conversions replaced by the arguments, by the rules of the
/// wide `printf` family and whatever the process's locale: %d %i %u %x %X %o %c %s %S %f %F %e %E
/// %g %G %p %%, with flags, width, precision, `*` and length letters.
///
/// The argument's own type decides how it is read; a length letter is accepted and says nothing
/// more. %s and %S take 16-bit and 8-bit text alike (8-bit text is UTF-8). A conversion without an
/// argument, or with one of another kind, prints nothing; an unknown conversion is printed as it
/// is. Width and precision are cut at 4096, so that a hostile format cannot exhaust memory.
///
/// Where run times differ: all digits of a large number are exact, a value in the middle between
/// two results goes to the even one, exponents have two digits or more, and what is not finite
/// prints as "inf" or "nan", which scanning reads back.
CORVANE_EXPORT void formatText(std::u16string& out, std::u16string_view format,
                               std::span<const FormatArgument> arguments);

}  // namespace corvane
