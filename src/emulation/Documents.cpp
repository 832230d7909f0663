#include "emulation/Help.h"
#include "system/Environment.h"
#include "system/Programs.h"

namespace corvane::emulation {

using namespace system;

namespace {

// An opener that fails does so at once; one that finds a program may stay until that ends.
constexpr std::chrono::seconds kPatience{2};

}  // namespace

std::optional<std::u16string> documentOpener() {
    const std::u16string named =
        environmentVariable(u"CORVANE_HELP_OPENER").value_or(std::u16string());
    return findProgram(named.empty() ? u"xdg-open" : std::u16string_view(named));
}

bool openDocument(std::u16string_view path) {
    const std::optional<std::u16string> document = pathArgument(path);
    const std::optional<std::u16string> opener = documentOpener();
    return document && opener && startProgram(*opener, {&*document, 1}, kPatience);
}

}  // namespace corvane::emulation
