#pragma once

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/SQLLiteConnectorData.h>

#include "database/DriverTest.h"

inline const corvane::LoadedModule& collectorModule() {
    static const auto& module = *new corvane::LoadedModule(u"QORDatabaseu.dll");
    return module;
}

inline constexpr const char16_t* kSqliteDriver = u"QorSqliteDatabaseu.dll";

/// A collector from the module, as QORDataHelper holds it.
class CollectorScope {
public:
    explicit CollectorScope(const IConnectorData& connector) {
        const auto create =
            collectorModule().function<CreateCollectorFunction>(kCreateCollectorName);
        EXPECT_EQ(create ? create(&connector, &collector_) : -2, 0);
    }
    explicit CollectorScope(const CStringW& file, const char16_t* driver = kSqliteDriver)
        : CollectorScope(static_cast<const IConnectorData&>(SQLLiteConnectorData(driver, file))) {}
    CollectorScope(const CollectorScope&) = delete;
    CollectorScope& operator=(const CollectorScope&) = delete;
    ~CollectorScope() {
        const auto destroy =
            collectorModule().function<DestroyCollectorFunction>(kDestroyCollectorName);
        EXPECT_EQ(destroy ? destroy(&collector_) : -2, 0);
        EXPECT_EQ(collector_, nullptr);
    }

    IDatabaseCollector* operator->() const { return collector_; }
    IDatabaseCollector& operator*() const { return *collector_; }
    IReferenceData& reference() const { return collector_->reference(); }

private:
    IDatabaseCollector* collector_ = nullptr;
};
