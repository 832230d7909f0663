#include "language/Messages.h"

#include <algorithm>

#include <corvane/app/Installation.h>

namespace language {

namespace {

consteval bool areWhole() {
    for (const std::span<const Translation> table : kTables)
        if (!isWhole(table)) return false;
    for (const CountedTranslation& entry : kCountedTexts)
        if (!isWhole({&entry.one, 1}) || !isWhole({&entry.many, 1})) return false;
    return true;
}
static_assert(areWhole());

Language settledByLibrary() {
    const corvane::Installation installation = corvane::GetInstallation();
    // Without its module the library speaks English, and one run does not speak two languages.
    if (installation.triedModule != installation.wantedModule) return Language::English;
    if (installation.language == u"french") return Language::French;
    if (installation.language == u"japanese") return Language::Japanese;
    if (installation.language == u"korean") return Language::Korean;
    return Language::English;
}

Language settled() noexcept {
    try {
        return settledByLibrary();
    } catch (...) {
        return Language::English;  // for the last words of a program that has no memory
    }
}

Language& chosen() {
    static Language language = settled();
    return language;
}

void append(std::u16string& text, const corvane::FormatArgument& argument) {
    using Argument = corvane::FormatArgument;
    const bool isWhole = std::holds_alternative<Argument::Integer>(argument.value());
    const bool isReal = std::holds_alternative<double>(argument.value());
    corvane::formatText(text, isWhole ? u"%d" : isReal ? u"%g" : u"%s", {&argument, 1});
}

}  // namespace

Language current() {
    return chosen();
}

Scope::Scope(Language language) : former_(chosen()) {
    chosen() = language;
}

Scope::~Scope() {
    chosen() = former_;
}

CStringW textOf(const Translation& entry, std::span<const corvane::FormatArgument> arguments) {
    const CStringW own =
        CStringW::FromUtf8(std::string(entry.texts[static_cast<std::size_t>(current())]));
    std::u16string_view rest = own;
    std::u16string text;
    while (!rest.empty()) {
        const std::size_t number = rest.size() > 2 && rest[0] == u'{' && rest[2] == u'}'
                                       ? static_cast<std::size_t>(rest[1] - u'0')
                                       : arguments.size();
        if (number < arguments.size())
            append(text, arguments[number]);
        else
            text += rest.front();
        rest.remove_prefix(number < arguments.size() ? 3 : 1);
    }
    return text;
}

}  // namespace language
