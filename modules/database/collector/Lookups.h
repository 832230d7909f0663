#pragma once

#include <array>
#include <memory>
#include <vector>

#include <corvane/database/IDatabaseDriver.h>
#include <corvane/database/IReferenceData.h>

namespace collector {

/// The statements of the lookups.
enum class Lookup {
    Drills,
    NearestDrill,
    Thread,
    ThreadAsWritten,
    Threads,
    ClearanceHole,
    Materials,
    Material,
    MaterialAsWritten,
    BendRadius,
    Wall,
    Walls,
    Count,
};

// The rows of the lookups' statements. False for a row of a site's own that holds something else
// where a number belongs: a limit of 0 in place of it would let every part pass.
bool read(const qor_db::Row& row, qor_db::DrillSize& item);
bool read(const qor_db::Row& row, qor_db::ThreadHole& item);
bool read(const qor_db::Row& row, qor_db::Material& item);
bool read(const qor_db::Row& row, qor_db::WallThickness& item);
/// The lookup settles which column is meant, so the row itself is the item.
bool read(const qor_db::Row& row, qor_db::Row& item);

/// The prepared statements of the lookups, each made at its first use and kept.
class Lookups {
public:
    /// The database of the statements, or null with the reason why there is none.
    void connect(qor_db::IDatabaseConnection* database, qor_db::Status reason);

    /// All rows of a lookup. It is read to its end, so that nothing stays locked.
    template <typename Item>
    qor_db::Outcome<std::vector<Item>> all(Lookup lookup,
                                           const std::vector<qor_db::Value>& parameters) {
        std::vector<Item> items;
        qor_db::IQuery* query = nullptr;
        qor_db::Status status = run(lookup, parameters, query);
        if (!status.ok()) return status;
        while (query->next()) {
            items.emplace_back();
            if (status.ok() && !read(query->row(), items.back())) status = noNumber(query->row());
        }
        if (!query->status().ok()) return query->status();
        if (!status.ok()) return status;
        return items;
    }

    /// The first row; the message says what `name` gives when there is none.
    template <typename Item, typename Name>
    qor_db::Outcome<Item> first(Lookup lookup, const std::vector<qor_db::Value>& parameters,
                                const Name& name) {
        qor_db::Outcome<std::vector<Item>> items = all<Item>(lookup, parameters);
        if (!items.ok()) return items.status();
        if (items->empty()) return notFound(name());
        return std::move(items->front());
    }

    /// Whether a column holds a number, which then is in `number`.
    static bool readNumber(const qor_db::Row& row, std::size_t column, double& number);
    static qor_db::Status noNumber(const qor_db::Row& row);
    static qor_db::Status notFound(const CStringW& name);
    static qor_db::Status notOpen() noexcept;

private:
    qor_db::Status run(Lookup lookup, const std::vector<qor_db::Value>& parameters,
                       qor_db::IQuery*& query);

    qor_db::IDatabaseConnection* database_ = nullptr;
    qor_db::Status reason_ = notOpen();
    std::array<std::unique_ptr<qor_db::IQuery>, static_cast<std::size_t>(Lookup::Count)> queries_;
};

}  // namespace collector
