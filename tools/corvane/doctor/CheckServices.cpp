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

void checkHelpFile(Diagnosis& diagnosis, const CStringW& subject, const CStringW& file,
                   bool exists) {
    if (exists)
        diagnosis.good(subject, file);
    else
        diagnosis.wrong(subject, tr("there is no {0}, so that no page of the site is shown", file),
                        tr("put the file there"));
}

void checkSitePages(Diagnosis& diagnosis, const corvane::HelpSources& help) {
    const CStringW subject = tr("site's pages");
    const CStringW folder = help.siteFolder;
    if (folder.IsEmpty()) {
        diagnosis.note(subject, tr("{0} is not set", u"CORVANE_CUSTOMIZED_HELP_FOLDER_PATH"));
        return;
    }
    diagnosis.noteRelative(subject, folder);
    if (help.siteFolderExists)
        diagnosis.good(subject, folder);
    else
        diagnosis.wrong(subject, tr("{0} is no folder", folder),
                        tr("let CORVANE_CUSTOMIZED_HELP_FOLDER_PATH name a folder"));
    checkHelpFile(diagnosis, tr("topic file"), help.topicFile, help.topicFileExists);
    checkHelpFile(diagnosis, tr("page file"), help.pageFile, help.pageFileExists);
    const CStringW opener = corvane::GetEnvironmentText(u"CORVANE_HELP_OPENER");
    if (!help.opener.empty())
        diagnosis.good(tr("opener"), help.opener);
    else if (opener.IsEmpty())
        diagnosis.wrong(tr("opener"), tr("there is no xdg-open, which opens the pages"),
                        tr("install it, or let CORVANE_HELP_OPENER name another program"));
    else
        diagnosis.wrong(tr("opener"), tr("there is no program {0}", opener),
                        tr("let CORVANE_HELP_OPENER name a program in PATH or by its full path"));
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
    for (const Message name :
         {Message("debug"), Message("info"), Message("warning"), Message("error")}) {
        if (mask & bit) text += (text.IsEmpty() ? CStringW() : tr(", ")) + tr(name);
        bit *= 2;
    }
    return text.IsEmpty() ? tr("nothing") : text;
}

void checkLevel(Diagnosis& diagnosis) {
    const CStringW level = corvane::GetEnvironmentText(kLevelVariable);
    if (level.IsEmpty()) return;
    if (level.GetLength() > kLongestSetting)
        diagnosis.note(kLevelVariable,
                       tr("it is longer than 259 characters: every level is logged"));
    else if (const std::optional<int> mask = maskOf(level))
        diagnosis.good(kLevelVariable, level + u": " + levelsText(*mask));
    else
        diagnosis.wrong(kLevelVariable, tr("\"{0}\" is no number, and whatever logs fails", level),
                        tr("add up 1 debug, 2 info, 4 warning, 8 error"));
}

}  // namespace

void checkHelp(Diagnosis& diagnosis) {
    diagnosis.section(tr("Help"));
    const corvane::HelpSources help = corvane::GetHelpSources();
    checkSitePages(diagnosis, help);
    if (help.viewer.empty())
        diagnosis.note(tr("viewer"), tr("none is found: compiled help files cannot be shown"));
    else
        diagnosis.good(tr("viewer"), help.viewer);
}

void checkLogs(Diagnosis& diagnosis) {
    diagnosis.section(tr("Execution log"));
    const CStringW file = corvane::GetEnvironmentText(kLogVariable);
    diagnosis.noteRelative(kLogVariable, file);
    if (file.IsEmpty())
        diagnosis.note(kLogVariable, tr("not set: nothing is logged"));
    else if (file.GetLength() > kLongestSetting)
        diagnosis.wrong(kLogVariable, tr("it is longer than 259 characters: nothing is logged"),
                        tr("shorten the path"));
    else if (!isWritable(file))
        diagnosis.wrong(kLogVariable, tr("{0} cannot be written", file),
                        tr("let the user write the file and its folder"));
    else
        diagnosis.good(kLogVariable, tr("{0}, emptied by the next process that logs", file));
    checkLevel(diagnosis);
}
