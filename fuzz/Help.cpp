// The two help files, parted by a line "%%", asked for the page of topic 4711 as help on a topic
// is.

#include <optional>

#include "Fuzz.h"
#include "frontend/HelpFiles.h"

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
    if (!name) return 0;
    restOfLine(*pageText, *name, u"=");
    return 0;
}
