#include "emulation/Help.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "emulation/Registry.h"
#include "system/Files.h"
#include "system/Lasting.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/Programs.h"
#include "system/Unicode.h"

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

namespace {

constexpr std::u16string_view kViewerKey =
    u"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
// 260 bytes with the terminator.
constexpr std::size_t kLongestValue = 129;

enum class Topic { Option, None };
struct KnownViewer {
    std::u16string_view name;
    Topic topic;
};
// The one that can be told the topic comes first.
constexpr KnownViewer kKnownViewers[] = {
    {u"xchm", Topic::Option},
    {u"kchmviewer", Topic::None},
    {u"uchmviewer", Topic::None},
};

std::optional<std::u16string> registeredViewer() {
    const auto key = RegistryKey::open(RegistryRoot::ClassesRoot, kViewerKey);
    const std::u16string value =
        key ? key->defaultText().value_or(std::u16string()) : std::u16string();
    return value.size() <= kLongestValue ? findProgram(value) : std::nullopt;
}

std::vector<std::u16string> argumentsFor(std::u16string_view viewer, std::u16string file,
                                         const std::string& topic) {
    const auto* const known =
        std::ranges::find(kKnownViewers, fileName(viewer), &KnownViewer::name);
    if (known == std::end(kKnownViewers)) return {std::move(file), fromUtf8(topic)};
    if (known->topic == Topic::None) return {std::move(file)};
    return {u"--contextid=" + fromUtf8(topic), std::move(file)};
}

}  // namespace

HelpViewer& HelpViewer::ofProcess() {
    static Lasting<HelpViewer> viewer;
    return viewer.get();
}

std::optional<std::u16string> HelpViewer::installed() {
    std::optional<std::u16string> program = registeredViewer();
    for (const KnownViewer& known : kKnownViewers) {
        if (program) break;
        program = findProgram(known.name);
    }
    return program;
}

std::optional<std::u16string> HelpViewer::settled() {
    const std::lock_guard lock(mutex_);
    if (!program_ && !failed_) {
        program_ = installed();
        failed_ = !program_;
    }
    return program_;
}

bool HelpViewer::show(std::u16string_view file, QorLong topic) {
    const std::optional<std::u16string> viewer = settled();
    std::optional<std::u16string> argument = pathArgument(file);
    if (!viewer || !argument || topic < 0 || folderExists(*argument)) return false;
    return startProgram(*viewer, argumentsFor(*viewer, std::move(*argument), std::to_string(topic)),
                        std::chrono::milliseconds(0));
}

}  // namespace corvane::emulation
