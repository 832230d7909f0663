#pragma once

#include <corvane/base/Export.h>
#include <corvane/database/IConnectorData.h>
#include <corvane/text/CStringW.h>

/// A connection to a database file. Copies copy both texts.
class CORVANE_EXPORT SQLLiteConnectorData : public qor_db::IConnectorData {
public:
    /// Copies both texts; a null pointer counts as an empty text.
    SQLLiteConnectorData(const char16_t* modulePath, const char16_t* databaseFile);
    SQLLiteConnectorData(const SQLLiteConnectorData& other);
    SQLLiteConnectorData& operator=(const SQLLiteConnectorData& other);
    ~SQLLiteConnectorData() override;

    /// DATABASETYPE_SQLITE.
    DATABASETYPE type() const override;
    const char16_t* modulePath() const override;

    /// The path of the database file. Zero-terminated and valid as long as the object lives.
    const char16_t* databaseFile() const;

private:
    CStringW m_csModulePath;
    CStringW m_csDatabaseFile;
};
