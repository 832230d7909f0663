#pragma once

#include <corvane/base/Export.h>
#include <corvane/database/IConnectorData.h>
#include <corvane/text/CStringW.h>

/// A connection to a database server through a connection string. Copies copy both texts.
class CORVANE_EXPORT MSSQLConnectorData : public qor_db::IConnectorData {
public:
    /// Copies both texts; a null pointer counts as an empty text.
    MSSQLConnectorData(const char16_t* modulePath, const char16_t* connectionString);
    MSSQLConnectorData(const MSSQLConnectorData& other);
    MSSQLConnectorData& operator=(const MSSQLConnectorData& other);
    ~MSSQLConnectorData() override;

    /// DATABASETYPE_MSSQL.
    DATABASETYPE type() const override;
    const char16_t* modulePath() const override;

    /// The connection string, unchanged as configured, with any password in it. Zero-terminated and
    /// valid as long as the object lives.
    const char16_t* connectionString() const;

private:
    CStringW m_csModulePath;
    CStringW m_csConnectionString;
};
