#include "HtmlWriter.h"
#include "ResultJson.h"
#include "ResultWriter.h"

namespace results {

namespace {

// In the order of the help.
constexpr Format kFormats[] = {{"json", makeJsonWriter}, {"html", makeHtmlWriter, true}};

}  // namespace

std::span<const Format> allFormats() {
    return kFormats;
}

const Format* findFormat(std::string_view name) {
    for (const Format& format : kFormats)
        if (format.name == name) return &format;
    return nullptr;
}

}  // namespace results
