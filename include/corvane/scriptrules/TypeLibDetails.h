#pragma once

#include <cstdint>

#include <corvane/base/Export.h>
#include <corvane/platform/Guid.h>
#include <corvane/text/CStringW.h>

/// What tells a type library: the two ways between its registration and its file. A record lives
/// for one look-up.
struct CORVANE_EXPORT TypeLibDetails {
    /// A record of that file, with nothing read yet.
    explicit TypeLibDetails(CStringW file);

    /// The file that is registered for a library, for 64-bit use. The texts go into the registry
    /// path as they are. Of several registered versions the last in name order is taken, whatever
    /// `major` and `minor` say. True also for a registration whose path is empty or missing: `path`
    /// is then empty. False without a registration, with `path` untouched, and for a path of more
    /// than 259 code units, with `path` empty.
    bool FindTypeLibFile(CStringW& path, const CStringW& guid, const CStringW& major,
                         const CStringW& minor, CStringW lcid);

    /// Fills the other fields from the file `fileName`. False, with the fields unchanged, when it
    /// is no type library.
    bool ReadTypeLibAttributes();

    Guid guid;                       ///< Identifier of the library.
    std::uint16_t majorVersion = 0;  ///< Version, before the point.
    std::uint16_t minorVersion = 0;  ///< Version, after the point.
    std::uint32_t lcid = 0;          ///< Locale.
    CStringW fileName;               ///< Path of the file.
};
