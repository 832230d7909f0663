#pragma once

namespace qor_db {

/// The abstract description of one database connection: which kind of database, and which driver
/// module speaks to it. What else is needed is in the class of that kind.
class IConnectorData {
public:
    /// The kinds of database.
    enum DATABASETYPE {
        DATABASETYPE_SQLITE = 0,  ///< The object is an SQLLiteConnectorData.
        DATABASETYPE_MSSQL = 1,   ///< The object is an MSSQLConnectorData.
    };

    virtual ~IConnectorData() = default;

    /// The kind, and so the class of the object.
    virtual DATABASETYPE type() const = 0;

    /// The path of the driver module, zero-terminated and valid as long as the object lives. Empty
    /// when none is configured.
    virtual const char16_t* modulePath() const = 0;
};

}  // namespace qor_db
