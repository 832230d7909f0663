#pragma once

#include <string>

#include <corvane/database/IDatabaseDriver.h>

namespace qor_db::sqlite {

/// The file that a request names, ready to be opened.
struct DatabaseFile {
    /// Absolute, so that the database reads nothing but a path into it: neither a URI nor a name
    /// with a meaning of its own such as ":memory:".
    std::string path;  ///< UTF-8
    bool exists = false;

    /// The same file as a URI, with parameters after it.
    std::string uri(const char* parameters) const;
    /// True when changes are in a journal beside the file, so that the file alone is not whole.
    bool hasJournal() const;
};

/// Looks at the file. Makes the folder of a missing one when the request allows it.
Outcome<DatabaseFile> findDatabaseFile(const OpenRequest& request);

}  // namespace qor_db::sqlite
