// The two help files, parted by a line "%%", asked for the page of topic 4711 as help on a topic
// is.

#include <optional>

#include "Fuzz.h"
#include "frontend/HelpFiles.h"

namespace {

/// Whether taking out every mark at once joins the pieces around one to a new one.
bool joins(std::u16string_view text, std::u16string_view mark) {
    for (std::size_t i = 1; i < mark.size(); ++i)
        if (text.find(std::u16string(mark.substr(0, i)).append(mark)) != text.npos) return true;
    return false;
}

/// Neither a blank at an end nor what was looked for stays in what is left of a line of `text`.
void requireRest(const CStringW& rest, std::u16string_view text, std::u16string_view sought,
                 std::u16string_view mark) {
    CStringW trimmed = rest;
    trimmed.Trim();
    fuzz::require(trimmed == rest, "what is found is trimmed");
    CStringW without(text);
    without.Replace(sought, u"");
    fuzz::require(rest.Std().find(mark) == std::u16string::npos || joins(without.View(), mark),
                  "a mark is taken out");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    static const fuzz::Folder folder;
    const auto [topics, pages] = fuzz::parted(fuzz::textOf(data, size));
    folder.write("topics", topics);
    folder.write("pages", pages);
    using namespace corvane::app;
    const std::optional<std::u16string> topicText = readHelpFile(folder.wide("topics").Std());
    const std::optional<std::u16string> pageText = readHelpFile(folder.wide("pages").Std());
    fuzz::require(topicText && pageText, "a small file is read");
    const std::optional<CStringW> name = restOfLine(*topicText, u"4711", u"#define");
    fuzz::require(name.has_value() == (topicText->find(u"4711") != topicText->npos),
                  "a topic that is in the file is found");
    if (!name) return 0;
    requireRest(*name, *topicText, u"4711", u"#define");
    const std::optional<CStringW> page = restOfLine(*pageText, *name, u"=");
    if (name->IsEmpty()) return 0;  // it is in every line
    fuzz::require(page.has_value() == (pageText->find(name->Std()) != pageText->npos),
                  "a name that is in the file is found");
    if (page) requireRest(*page, *pageText, name->Std(), u"=");
    return 0;
}
