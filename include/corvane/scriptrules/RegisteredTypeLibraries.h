#pragma once

#include <vector>

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// One registration of a type library. Version and locale are the names of registry keys:
/// hexadecimal numbers, such as "1.0" and "409".
struct RegisteredTypeLibrary {
    CStringW guid;     ///< As a GUID is written, with braces.
    CStringW version;  ///< Major and minor number with a point between them.
    CStringW lcid;     ///< Locale.
    CStringW file;     ///< For 64-bit use; empty when there is none, or one that is too long.
    /// What TypeLibDetails::FindTypeLibFile gives for this GUID and locale. False for a version
    /// that another one hides.
    bool found = false;
};

/// All registrations, in the order of the registry.
CORVANE_EXPORT std::vector<RegisteredTypeLibrary> GetRegisteredTypeLibraries();

}  // namespace corvane
