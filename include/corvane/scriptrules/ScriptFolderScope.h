#pragma once

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// Makes a folder the script folder of this thread for as long as the scope lives, in place of the
/// one that ConfigModule.ini names, for a host that runs rules of several script folders. Making a
/// rule and running it both look there. An empty folder leaves the configured one in place. Scopes
/// nest, and end in reverse order on the thread that began them.
class CORVANE_EXPORT ScriptFolderScope {
public:
    /// The folder, with or without a closing separator.
    explicit ScriptFolderScope(CStringW folder);
    ScriptFolderScope(const ScriptFolderScope&) = delete;
    ScriptFolderScope& operator=(const ScriptFolderScope&) = delete;
    ~ScriptFolderScope();

private:
    CStringW folder_;
    const CStringW* former_;
};

}  // namespace corvane
