#pragma once

#include <string>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

extern "C" {

/// Asks for help on a numbered topic and stores 1 when it was shown, else 0. A
/// failure shows no message, and no exception gets out.
///
/// The site's own page of the topic comes first, where CORVANE_CUSTOMIZED_HELP_FOLDER_PATH names
/// the folder of such pages and the installation's two help files lead from the topic to a page
/// there. Otherwise the help viewer shows the topic in `helpFile`, a compiled help file of the
/// caller's. The call waits for neither to be closed, but up to two seconds for an opener that may
/// yet fail. `shown` may be null.
CORVANE_EXPORT void ShowQORHelp(CStringW helpFile, QorLong helpId, int* shown);
}

namespace corvane {

/// Where help would come from now: tells the person who sets up a site why a topic shows or not.
struct HelpSources {
    /// The folder of the site's own pages, as CORVANE_CUSTOMIZED_HELP_FOLDER_PATH has it; empty
    /// when it is not set. Without it the next two files and the opener are not used.
    std::u16string siteFolder;
    bool siteFolderExists = false;  ///< That folder exists.
    /// The file that leads from a topic's number to its help name, and the one that leads from
    /// there to a page. Both paths are full.
    std::u16string topicFile;
    bool topicFileExists = false;  ///< The file is there.
    std::u16string pageFile;       ///< Leads from the help name to a page.
    bool pageFileExists = false;   ///< The file is there.
    /// The full path of the program that opens pages, and of the viewer for compiled help; empty
    /// when none is found. A process that has shown help keeps the viewer that it found then.
    std::u16string opener;
    std::u16string viewer;  ///< Of compiled help.
};

/// Looks at the environment, the registry and the files; starts nothing.
CORVANE_EXPORT HelpSources GetHelpSources();

}  // namespace corvane
