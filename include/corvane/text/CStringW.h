#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <corvane/base/Export.h>
#include <corvane/text/Format.h>

namespace corvane {

/// What a CStringW is compared with without a conversion: a pointer, where null counts as empty, or
/// a view.
template <typename Text>
concept ComparableText =
    std::convertible_to<const Text&, std::u16string_view> && !std::derived_from<Text, CStringW>;

/// A number that is no code unit.
template <typename Number>
concept PlainNumber = std::integral<Number> && !std::same_as<Number, char16_t>;

}  // namespace corvane

/// Text in 16-bit code units, counted, so that it may hold U+0000.
///
/// Positions and lengths are in code units, from 0. **Out of range:** a negative position or count
/// counts as 0, one after the end as the end; a search that starts after the end finds nothing;
/// reading a unit outside the text gives U+0000 and writing one does nothing. **Lone surrogates**
/// are kept as they are in memory and become U+FFFD where text turns into UTF-8; bytes that are not
/// UTF-8 become U+FFFD, one for each ill-formed sequence.
///
/// Comparison is by code unit, except in the operations that collate or say "no case". The latter,
/// and the case operations, map each unit alone by the simple mappings of Unicode, in every process
/// locale alike. White space is what Unicode calls so: blank, tab, line ends, U+00A0, U+3000 and
/// the rest.
class CORVANE_EXPORT CStringW {
    struct NoPointer;

public:
    CStringW() = default;
    CStringW(const char16_t* text);  ///< A null pointer gives an empty text.
    /// The first `length` units of `text`, zeros too; a null pointer or a length below 1 gives an
    /// empty text.
    CStringW(const char16_t* text, int length);
    /// One unit, `repeat` times.
    explicit CStringW(char16_t unit, int repeat = 1);
    /// The units of a text.
    CStringW(std::u16string text) : text_(std::move(text)) {}
    CStringW(std::u16string_view text) : text_(text) {}  ///< The units of a text.
    /// Widens 8-bit text through the process's code page. A null pointer gives an empty text.
    explicit CStringW(const char* text);

    /// Text of UTF-8.
    [[nodiscard]] static CStringW FromUtf8(std::string_view bytes);
    /// The text in UTF-8.
    [[nodiscard]] std::string ToUtf8() const;
    /// 8-bit text in the process's code page; what it lacks becomes a replacement character.
    [[nodiscard]] std::string ToNarrow() const;

    /// Number of code units.
    [[nodiscard]] int GetLength() const { return static_cast<int>(text_.size()); }
    /// True for a text of no unit.
    [[nodiscard]] bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }  ///< Removes all units.

    ///@{
    /// One unit of the text, read and written.
    char16_t GetAt(int position) const;
    void SetAt(int position, char16_t unit);
    char16_t operator[](int position) const { return GetAt(position); }
    ///@}

    ///@{
    /// The zero-terminated text, valid until this object changes.
    const char16_t* GetString() const { return text_.c_str(); }
    operator const char16_t*() const { return text_.c_str(); }
    ///@}
    /// The units of the text as a view, valid until this object changes.
    operator std::u16string_view() const { return text_; }
    // The pointer would also serve as a truth value, as an operand of `delete` and for arithmetic.
    // None of them means for a text what it says, so none compiles; IsEmpty asks for a text.
    explicit operator bool() const = delete;
    operator const NoPointer*() const = delete;
    template <typename Number>
    requires corvane::PlainNumber<Number>
    friend void operator+(const CStringW&, Number) = delete;
    template <typename Number>
    requires corvane::PlainNumber<Number>
    friend void operator+(Number, const CStringW&) = delete;
    template <std::integral Number>
    friend void operator-(const CStringW&, Number) = delete;
    friend void operator-(const CStringW&, const CStringW&) = delete;
    /// The units of the text, valid until this object changes.
    std::u16string_view View() const { return text_; }
    /// The same as the standard library's text.
    const std::u16string& Std() const { return text_; }

    /// Takes over zero-terminated text; null gives an empty one.
    CStringW& operator=(const char16_t* text);
    // A template, so that neither 0 nor {} is taken for a unit.
    /// A text of that one unit.
    template <std::same_as<char16_t> Unit>
    CStringW& operator=(Unit unit) {
        text_.assign(1, unit);
        return *this;
    }
    ///@{
    /// Appends; null appends nothing. The argument may refer to this object.
    CStringW& operator+=(const CStringW& text);
    CStringW& operator+=(std::u16string_view text);
    CStringW& operator+=(const std::u16string& text) { return *this += std::u16string_view(text); }
    CStringW& operator+=(const char16_t* text);
    CStringW& operator+=(char16_t unit);
    void Append(std::u16string_view text) { text_ += text; }
    void AppendChar(char16_t unit) { text_ += unit; }
    ///@}
    /// Makes room for `length` units, so that appending up to there moves nothing.
    void Preallocate(int length);
    /// Cuts the text after `length` units; a longer length changes nothing.
    void Truncate(int length);
    /// Room for `length` units, or for the text when that is longer, and a zero after them. The
    /// units may be written until ReleaseBuffer sets the length: `length`, or without one the units
    /// before the first zero.
    char16_t* GetBuffer(int length = 0);
    /// Ends the writing that GetBuffer began.
    void ReleaseBuffer(int length = -1);

    [[nodiscard]] int Compare(std::u16string_view other) const;  ///< Below 0, 0 or above 0.
    [[nodiscard]] int CompareNoCase(
        std::u16string_view other) const;  ///< The same, without regard to case.
    /// The same in the order of the user's language, for lists that a person reads. Texts that this
    /// order holds equal are ordered by code unit. Never for what is stored: users differ.
    [[nodiscard]] int Collate(std::u16string_view other) const;
    /// The same without regard to case.
    [[nodiscard]] int CollateNoCase(std::u16string_view other) const;

    ///@{
    [[nodiscard]] int Find(std::u16string_view text, int start = 0) const;  ///< Position, or -1.
    [[nodiscard]] int Find(char16_t unit, int start = 0) const;
    ///@}
    /// The position of the last such unit, or -1.
    [[nodiscard]] int ReverseFind(char16_t unit) const;
    /// The position of the first unit that is one of `units`, or -1.
    [[nodiscard]] int FindOneOf(std::u16string_view units) const;

    /// The first `count` units.
    [[nodiscard]] CStringW Left(int count) const;
    /// The units from `first` to the end.
    [[nodiscard]] CStringW Mid(int first) const;
    /// `count` units from `first`.
    [[nodiscard]] CStringW Mid(int first, int count) const;
    /// The last `count` units.
    [[nodiscard]] CStringW Right(int count) const;
    /// The units at the start that are all among `units`.
    [[nodiscard]] CStringW SpanIncluding(std::u16string_view units) const;
    /// The units at the start of which none is among `units`.
    [[nodiscard]] CStringW SpanExcluding(std::u16string_view units) const;
    /// The next run of units that are not in `separators`, from `position`, which moves past it.
    /// At the end the result is empty and `position` -1.
    CStringW Tokenize(std::u16string_view separators, int& position) const;

    ///@{
    int Replace(std::u16string_view from, std::u16string_view to);  ///< Number of replacements.
    int Replace(char16_t from, char16_t to);
    ///@}
    int Remove(char16_t unit);  ///< Number of units removed.
    ///@{
    int Insert(int position, std::u16string_view text);  ///< New length.
    int Insert(int position, char16_t unit) { return Insert(position, {&unit, 1}); }
    ///@}
    int Delete(int position, int count = 1);  ///< New length.

    /// Makes every unit lower case.
    CStringW& MakeLower();
    /// Makes every unit upper case.
    CStringW& MakeUpper();
    /// Reverses the order of the units.
    CStringW& MakeReverse();
    ///@{
    /// Removes white space, or the given units, from both ends, from the start or from the end.
    CStringW& Trim();
    CStringW& Trim(std::u16string_view units);
    CStringW& Trim(char16_t unit) { return Trim({&unit, 1}); }
    CStringW& TrimLeft();
    CStringW& TrimLeft(std::u16string_view units);
    CStringW& TrimLeft(char16_t unit) { return TrimLeft({&unit, 1}); }
    CStringW& TrimRight();
    CStringW& TrimRight(std::u16string_view units);
    CStringW& TrimRight(char16_t unit) { return TrimRight({&unit, 1}); }
    ///@}

    /// Replaces the text by the formatted one; see corvane::formatText. The arguments may refer to
    /// this object.
    template <typename... Arguments>
    void Format(std::u16string_view format, const Arguments&... arguments) {
        CStringW result;
        result.AppendFormat(format, arguments...);
        text_.swap(result.text_);
    }
    /// Appends the formatted text. The arguments must not refer to this object.
    template <typename... Arguments>
    void AppendFormat(std::u16string_view format, const Arguments&... arguments) {
        if constexpr (sizeof...(arguments) == 0) {
            corvane::formatText(text_, format, {});
        } else {
            const corvane::FormatArgument list[] = {corvane::FormatArgument(arguments)...};
            corvane::formatText(text_, format, list);
        }
    }

    friend bool operator==(const CStringW& a, const CStringW& b) { return a.text_ == b.text_; }
    friend bool operator==(const CStringW& a, const corvane::ComparableText auto& b) {
        return a.text_ == viewOf(b);
    }
    friend std::strong_ordering operator<=>(const CStringW& a, const CStringW& b) {
        return a.text_.compare(b.text_) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CStringW& a,
                                            const corvane::ComparableText auto& b) {
        return a.text_.compare(viewOf(b)) <=> 0;
    }
    ///@{
    /// One text after the other.
    friend CStringW operator+(CStringW a, const CStringW& b) { return std::move(a += b); }
    friend CStringW operator+(CStringW a, const char16_t* b) { return std::move(a += b); }
    friend CStringW operator+(const char16_t* a, const CStringW& b) {
        return std::move(CStringW(a) += b);
    }
    friend CStringW operator+(CStringW a, char16_t b) { return std::move(a += b); }
    friend CStringW operator+(char16_t a, const CStringW& b) { return std::move(CStringW(a) += b); }
    ///@}

private:
    template <typename Text>
    static std::u16string_view viewOf(const Text& text) {
        if constexpr (std::convertible_to<const Text&, const char16_t*>) {
            const char16_t* pointer = text;
            return pointer ? pointer : u"";
        } else {
            return text;
        }
    }

    std::u16string text_;
};

/// Equal texts have equal hashes.
template <>
struct std::hash<CStringW> {
    /// The hash of the units.
    std::size_t operator()(const CStringW& text) const noexcept {
        return std::hash<std::u16string_view>{}(text.View());
    }
};
