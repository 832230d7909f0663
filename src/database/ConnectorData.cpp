#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/SQLLiteConnectorData.h>

MSSQLConnectorData::MSSQLConnectorData(const char16_t* modulePath, const char16_t* connectionString)
    : m_csModulePath(modulePath), m_csConnectionString(connectionString) {}

MSSQLConnectorData::MSSQLConnectorData(const MSSQLConnectorData& other) = default;
MSSQLConnectorData& MSSQLConnectorData::operator=(const MSSQLConnectorData& other) = default;
MSSQLConnectorData::~MSSQLConnectorData() = default;

qor_db::IConnectorData::DATABASETYPE MSSQLConnectorData::type() const {
    return DATABASETYPE_MSSQL;
}

const char16_t* MSSQLConnectorData::modulePath() const {
    return m_csModulePath.GetString();
}

const char16_t* MSSQLConnectorData::connectionString() const {
    return m_csConnectionString.GetString();
}

SQLLiteConnectorData::SQLLiteConnectorData(const char16_t* modulePath, const char16_t* databaseFile)
    : m_csModulePath(modulePath), m_csDatabaseFile(databaseFile) {}

SQLLiteConnectorData::SQLLiteConnectorData(const SQLLiteConnectorData& other) = default;
SQLLiteConnectorData& SQLLiteConnectorData::operator=(const SQLLiteConnectorData& other) = default;
SQLLiteConnectorData::~SQLLiteConnectorData() = default;

qor_db::IConnectorData::DATABASETYPE SQLLiteConnectorData::type() const {
    return DATABASETYPE_SQLITE;
}

const char16_t* SQLLiteConnectorData::modulePath() const {
    return m_csModulePath.GetString();
}

const char16_t* SQLLiteConnectorData::databaseFile() const {
    return m_csDatabaseFile.GetString();
}
