#pragma once

#include <string>
#include <vector>

#include <corvane/base/Export.h>

namespace corvane {

/// A file that the registry is read from where the system has none of its own.
struct RegistrySource {
    std::u16string file;    ///< The path, whether the file exists or not.
    bool readable = false;  ///< False for a missing file too.
    bool hasKeys = false;   ///< A file that is no registry export has none.
};

/// The files in the order in which they are laid one over the other. Reads them.
CORVANE_EXPORT std::vector<RegistrySource> GetRegistrySources();

}  // namespace corvane
