#include <algorithm>
#include <string>

#include <corvane/app/Help.h>

#include "app/CCorvaneFrameworkApp.h"
#include "emulation/Help.h"
#include "frontend/HelpFiles.h"
#include "system/Files.h"
#include "system/Modules.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/Unicode.h"

namespace corvane::app {
namespace {

constexpr char16_t kByteOrderMark = u'\uFEFF';

}  // namespace

std::optional<std::u16string> readHelpFile(std::u16string_view path) {
    const std::optional<std::string> bytes = system::readFile(path, kLargestHelpFile);
    if (!bytes) return std::nullopt;
    std::u16string text = system::widen(*bytes);
    if (text.starts_with(kByteOrderMark)) text.erase(0, 1);
    return text;
}

std::optional<CStringW> restOfLine(std::u16string_view text, std::u16string_view sought,
                                   std::u16string_view mark) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        const std::u16string_view line = text.substr(0, end);
        if (line.find(sought) != line.npos) {
            CStringW rest(line);
            rest.Replace(sought, u"");
            rest.Replace(mark, u"");
            return rest.Trim();
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::nullopt;
}

}  // namespace corvane::app

using namespace corvane::app;
using namespace corvane::emulation;
using namespace corvane::system;

namespace {

constexpr std::u16string_view kSiteVariable = u"CORVANE_CUSTOMIZED_HELP_FOLDER_PATH";

// Help that cannot be given is no fault of the caller's, so whatever goes wrong is only told to
// people who debug, and counts as not found.
template <typename Step>
int quietly(std::u16string_view complaint, Step step) {
    try {
        if (step()) return 1;
    } catch (...) {
        debugOutput(complaint);
    }
    return 0;
}

int findInFile(const CStringW& file, std::u16string_view sought, std::u16string_view mark,
               CStringW& found, std::u16string_view complaint) {
    return quietly(complaint, [&] {
        const std::optional<std::u16string> text = readHelpFile(file);
        if (!text) {
            debugOutput(complaint);
            return false;
        }
        const std::optional<CStringW> rest = restOfLine(*text, sought, mark);
        found = rest.value_or(CStringW());
        return rest.has_value();
    });
}

}  // namespace

int CCorvaneFrameworkApp::ShowHelp(CStringW helpFile, QorLong helpId) const {
    return quietly(u"caught exception in CCorvaneFrameworkApp::ShowHelp", [&] {
        return ShowCustomizedHelp(helpId) != 0 || HelpViewer::ofProcess().show(helpFile, helpId);
    });
}

int CCorvaneFrameworkApp::ShowCustomizedHelp(QorLong helpId) const {
    CStringW folder;
    GetCustomizedHelpFolderPath(folder);
    if (folder.IsEmpty()) return 0;
    const std::u16string install(parentFolder(parentFolder(GetFrameworkDllPath())));
    CStringW helpName;
    CStringW page;
    if (FindHelpIDInString(join(install, kTopicFile), helpId, helpName) == 0) return 0;
    if (FindHelpHtmFileName(join(install, kPageFile), helpName, page) == 0) return 0;
    return openDocument(join(folder, page)) ? 1 : 0;
}

void CCorvaneFrameworkApp::GetCustomizedHelpFolderPath(CStringW& folder) const {
    quietly(u"caught exception in CCorvaneFrameworkApp::GetCustomizedHelpFolderPath", [&] {
        if (const auto value = environmentVariable(kSiteVariable)) folder = *value;
        return true;
    });
}

int CCorvaneFrameworkApp::FindHelpIDInString(CStringW file, QorLong helpId,
                                             CStringW& helpName) const {
    CStringW numeral;
    numeral.Format(u"%d", helpId);
    return findInFile(file, numeral, u"#define", helpName,
                      u"caught exception in CCorvaneFrameworkApp::FindHelpIDInString");
}

int CCorvaneFrameworkApp::FindHelpHtmFileName(CStringW file, CStringW helpName,
                                              CStringW& page) const {
    return findInFile(file, helpName, u"=", page,
                      u"caught exception in CCorvaneFrameworkApp::FindHelpHtmFileName");
}

void ShowQORHelp(CStringW helpFile, QorLong helpId, int* shown) {
    const CCorvaneFrameworkApp* const app = frameworkApp();
    const int result = app ? app->ShowHelp(std::move(helpFile), helpId) : 0;
    if (shown) *shown = result;
}

namespace corvane {

HelpSources GetHelpSources() {
    HelpSources sources;
    sources.siteFolder = environmentVariable(kSiteVariable).value_or(std::u16string());
    sources.siteFolderExists = !sources.siteFolder.empty() && folderExists(sources.siteFolder);
    sources.topicFile = normalise(join(installFolder(), kTopicFile));
    sources.topicFileExists = pathExists(sources.topicFile);
    sources.pageFile = normalise(join(installFolder(), kPageFile));
    sources.pageFileExists = pathExists(sources.pageFile);
    sources.opener = documentOpener().value_or(std::u16string());
    sources.viewer = HelpViewer::installed().value_or(std::u16string());
    return sources;
}

}  // namespace corvane
