#pragma once

#include <memory>

#include <corvane/base/Export.h>

namespace corvane {

namespace system {
class LooksAtFiles;
}

/// Has the calling thread find ConfigModule.ini, the indexes of user-defined rules and the files of
/// the registry as it first finds them within the scope, for a host that runs many rules in a row:
/// the rules agree on one state, and each file is looked at once, not for each rule. An edit is
/// seen after the scope. Scripts, rule files and type libraries are read as they are at any time.
///
/// Scopes nest, and end in reverse order on the thread that began them; an inner one changes
/// nothing.
class CORVANE_EXPORT SteadyFilesScope {
public:
    SteadyFilesScope();
    SteadyFilesScope(const SteadyFilesScope&) = delete;
    SteadyFilesScope& operator=(const SteadyFilesScope&) = delete;
    ~SteadyFilesScope();

private:
    std::unique_ptr<system::LooksAtFiles> looks_;  // null in an inner scope
};

}  // namespace corvane
