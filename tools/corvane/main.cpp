#include <exception>
#include <filesystem>
#include <iostream>
#include <system_error>

#include <corvane/app/StringResources.h>
#include <corvane/platform/Environment.h>

#include "Commands.h"

namespace {

/// Hands the folders on to the library, which reads them from the environment.
void applyFolders(const Options& options) {
    const struct {
        const char16_t* variable;
        const CStringW& value;
    } settings[] = {{u"CORVANE_DATA_DIR", options.dataFolder},
                    {u"CORVANE_REGISTRY_DIR", options.registryFolder},
                    {u"CORVANE_PART", options.part}};
    for (const auto& [variable, value] : settings)
        if (!value.IsEmpty()) corvane::SetEnvironmentText(variable, value);
}

/// Makes the part's path full, so that rules and engines mean the same file. False when there is no
/// such file.
bool findPart(CStringW& part) {
    if (part.IsEmpty()) return true;
    std::error_code status;
    const std::filesystem::path path(part.Std());
    if (!std::filesystem::is_regular_file(path, status)) return false;
    part = std::filesystem::absolute(path).u16string();
    return true;
}

int runCommand(Options& options, Console& console) {
    if (corvane::ResourceText(corvane::resource::kRuleNode).empty()) {
        console.report(u"corvane: the language module of this installation cannot be loaded");
        return kUnusable;
    }
    if (!findPart(options.part)) {
        console.report(options.part + u": no such part");
        return kUnusable;
    }
    applyFolders(options);
    switch (options.command) {
        case Command::Show:
            return showRules(options, console);
        case Command::Save:
            return saveRules(options, console);
        case Command::Run:
            break;
    }
    return runRules(options, console);
}

int checkedCommand(Options& options, Console& console) {
    try {
        return runCommand(options, console);
    } catch (const std::exception& error) {
        console.report(u"corvane: " + CStringW(error.what()));
        return kUnusable;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::variant<Options, int> parsed = parseOptions(argc, argv);
    if (const int* status = std::get_if<int>(&parsed))
        return std::cout.flush() ? *status : static_cast<int>(kUnusable);
    Options options = std::get<Options>(parsed);
    Console console(options.batch);
    int status = checkedCommand(options, console);
    if (!console.finish()) {
        console.report(u"corvane: the results cannot be written");
        status = kUnusable;
    }
    return status;
}
