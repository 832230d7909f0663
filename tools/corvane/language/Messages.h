#pragma once

#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include <corvane/text/CStringW.h>
#include <corvane/text/Format.h>

#include "language/CommandTexts.h"
#include "language/CountedTexts.h"
#include "language/DoctorTexts.h"
#include "language/FileTexts.h"
#include "language/HelpTexts.h"
#include "language/LintTexts.h"
#include "language/ReportTexts.h"
#include "language/RunTexts.h"
#include "results/Remark.h"

namespace language {

enum class Language { English, French, Japanese, Korean };

/// The language that the library has settled on, as long as it has texts for it.
Language current();

/// Another language, for a block.
class Scope {
public:
    explicit Scope(Language language);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();

private:
    Language former_;
};

inline constexpr std::span<const Translation> kTables[] = {kHelpTexts,    kRunTexts,    kFileTexts,
                                                           kCommandTexts, kDoctorTexts, kLintTexts};

/// A text of the tables with `Count` arguments, made from its English form. Another text, or one
/// with other placeholders, does not compile.
template <std::size_t Count>
class MessageWith {
public:
    template <std::size_t Size>
    consteval MessageWith(const char (&english)[Size]) : entry_(find({english, Size - 1})) {
        if (placeholdersOf(entry_->texts[0]) != (1U << Count) - 1)
            throw "the text has other placeholders";
    }

    const Translation& entry() const { return *entry_; }
    std::string_view english() const { return entry_->texts[0]; }
    /// The text as the table has it, zero-terminated. Takes no memory.
    std::string_view own() const { return entry_->texts[static_cast<std::size_t>(current())]; }

private:
    static consteval const Translation* find(std::string_view english) {
        for (const std::span<const Translation> table : kTables)
            for (const Translation& entry : table)
                if (entry.texts[0] == english) return &entry;
        throw "the text is in no table";
    }

    const Translation* entry_;
};

using Message = MessageWith<0>;

/// The same of a text that counts something, made from both English forms.
template <std::size_t Count>
class CountedWith {
public:
    template <std::size_t One, std::size_t Many>
    consteval CountedWith(const char (&one)[One], const char (&many)[Many])
        : entry_(find({one, One - 1}, {many, Many - 1})) {
        if (placeholdersOf(entry_->many.texts[0]) != (1U << Count) - 1)
            throw "the text has other placeholders";
    }

    const Translation& formFor(std::int64_t count) const {
        // Of these languages only English and French have two forms, and French counts 0 as one.
        const bool isOne = count == 1 || (count == 0 && current() == Language::French);
        return isOne ? entry_->one : entry_->many;
    }

private:
    static consteval const CountedTranslation* find(std::string_view one, std::string_view many) {
        for (const CountedTranslation& entry : kCountedTexts)
            if (entry.one.texts[0] == one && entry.many.texts[0] == many) return &entry;
        throw "the text is not in the table";
    }

    const CountedTranslation* entry_;
};

/// The text of an entry in the current language, with its arguments.
CStringW textOf(const Translation& entry, std::span<const corvane::FormatArgument> arguments);

}  // namespace language

using language::Message;

/// A text in the user's language: tr("{0} is not there", path). Arguments are numbers and texts.
template <typename... Arguments>
CStringW tr(std::type_identity_t<language::MessageWith<sizeof...(Arguments)>> message,
            const Arguments&... arguments) {
    // One more, because there is no array of none.
    const corvane::FormatArgument list[] = {corvane::FormatArgument(arguments)..., 0};
    return language::textOf(message.entry(), {list, sizeof...(Arguments)});
}

/// The same in UTF-8.
template <typename... Arguments>
std::string trUtf8(std::type_identity_t<language::MessageWith<sizeof...(Arguments)>> message,
                   const Arguments&... arguments) {
    return tr(message, arguments...).ToUtf8();
}

/// The form for a number, which is the first argument: trCount({"{0} rule", "{0} rules"}, count).
template <typename... Arguments>
CStringW trCount(std::type_identity_t<language::CountedWith<sizeof...(Arguments) + 1>> forms,
                 std::int64_t count, const Arguments&... arguments) {
    const corvane::FormatArgument list[] = {count, corvane::FormatArgument(arguments)...};
    return language::textOf(forms.formFor(count), list);
}

/// What files of results and people are told.
template <typename... Arguments>
results::Remark remark(std::type_identity_t<language::MessageWith<sizeof...(Arguments)>> message,
                       const Arguments&... arguments) {
    std::string shown = trUtf8(message, arguments...);
    const language::Scope english(language::Language::English);
    return {trUtf8(message, arguments...), std::move(shown)};
}

/// The same of texts that `make` makes anew for each language.
template <typename Make>
std::vector<results::Remark> remarks(Make make) {
    const std::vector<CStringW> shown = make();
    const language::Scope english(language::Language::English);
    const std::vector<CStringW> texts = make();
    std::vector<results::Remark> both;
    for (std::size_t i = 0; i < texts.size() && i < shown.size(); ++i)
        both.push_back({texts[i].ToUtf8(), shown[i].ToUtf8()});
    return both;
}
