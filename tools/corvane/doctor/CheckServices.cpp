#include <optional>
#include <stdexcept>
#include <string>

#include <corvane/app/Help.h>
#include <corvane/platform/Environment.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"

namespace {

constexpr const char16_t* kLogVariable = u"QOR_EXECUTION_LOG";
constexpr const char16_t* kLevelVariable = u"QOR_EXECUTION_LEVEL";
/// The logger passes over what is longer.
constexpr int kLongestSetting = 259;

void checkHelpFile(Diagnosis& diagnosis, const char16_t* subject, const CStringW& file,
                   bool exists) {
    if (exists)
        diagnosis.good(subject, file);
    else
        diagnosis.wrong(subject, u"there is no " + file + u", so that no page of the site is shown",
                        u"put the file there");
}

void checkSitePages(Diagnosis& diagnosis, const corvane::HelpSources& help) {
    const CStringW folder = help.siteFolder;
    if (folder.IsEmpty()) {
        diagnosis.note(u"site's pages", u"CORVANE_CUSTOMIZED_HELP_FOLDER_PATH is not set");
        return;
    }
    diagnosis.noteRelative(u"site's pages", folder);
    if (help.siteFolderExists)
        diagnosis.good(u"site's pages", folder);
    else
        diagnosis.wrong(u"site's pages", folder + u" is no folder",
                        u"let CORVANE_CUSTOMIZED_HELP_FOLDER_PATH name a folder");
    checkHelpFile(diagnosis, u"topic file", help.topicFile, help.topicFileExists);
    checkHelpFile(diagnosis, u"page file", help.pageFile, help.pageFileExists);
    const CStringW opener = corvane::GetEnvironmentText(u"CORVANE_HELP_OPENER");
    if (!help.opener.empty())
        diagnosis.good(u"opener", help.opener);
    else if (opener.IsEmpty())
        diagnosis.wrong(u"opener", u"there is no xdg-open, which opens the pages",
                        u"install it, or let CORVANE_HELP_OPENER name another program");
    else
        diagnosis.wrong(u"opener", u"there is no program " + opener,
                        u"let CORVANE_HELP_OPENER name a program in PATH or by its full path");
}

/// The mask at the start of a text, as the logger reads it; nothing when there is no number.
std::optional<int> maskOf(const CStringW& text) {
    try {
        return std::stoi(text.ToUtf8());
    } catch (const std::logic_error&) {
        return std::nullopt;
    }
}

CStringW levelsText(int mask) {
    CStringW text;
    int bit = 1;
    for (const char16_t* name : {u"debug", u"info", u"warning", u"error"}) {
        if (mask & bit) text += (text.IsEmpty() ? CStringW() : CStringW(u", ")) + name;
        bit *= 2;
    }
    return text.IsEmpty() ? CStringW(u"nothing") : text;
}

void checkLevel(Diagnosis& diagnosis) {
    const CStringW level = corvane::GetEnvironmentText(kLevelVariable);
    if (level.IsEmpty()) return;
    if (level.GetLength() > kLongestSetting)
        diagnosis.note(kLevelVariable, u"it is longer than 259 characters: every level is logged");
    else if (const std::optional<int> mask = maskOf(level))
        diagnosis.good(kLevelVariable, level + u": " + levelsText(*mask));
    else
        diagnosis.wrong(kLevelVariable, u"\"" + level + u"\" is no number, and whatever logs fails",
                        u"add up 1 debug, 2 info, 4 warning, 8 error");
}

}  // namespace

void checkHelp(Diagnosis& diagnosis) {
    diagnosis.section(u"Help");
    const corvane::HelpSources help = corvane::GetHelpSources();
    checkSitePages(diagnosis, help);
    if (help.viewer.empty())
        diagnosis.note(u"viewer", u"none is found: compiled help files cannot be shown");
    else
        diagnosis.good(u"viewer", help.viewer);
}

void checkLogs(Diagnosis& diagnosis) {
    diagnosis.section(u"Execution log");
    const CStringW file = corvane::GetEnvironmentText(kLogVariable);
    diagnosis.noteRelative(kLogVariable, file);
    if (file.IsEmpty())
        diagnosis.note(kLogVariable, u"not set: nothing is logged");
    else if (file.GetLength() > kLongestSetting)
        diagnosis.wrong(kLogVariable, u"it is longer than 259 characters: nothing is logged",
                        u"shorten the path");
    else if (!isWritable(file))
        diagnosis.wrong(kLogVariable, file + u" cannot be written",
                        u"let the user write the file and its folder");
    else
        diagnosis.good(kLogVariable, file + u", emptied by the next process that logs");
    checkLevel(diagnosis);
}
