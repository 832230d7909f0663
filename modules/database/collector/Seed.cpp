#include "Seed.h"

#include <cmath>
#include <iterator>
#include <set>
#include <span>

#include "seed/BendRadii.h"
#include "seed/ClearanceHoles.h"
#include "seed/Drills.h"
#include "seed/Materials.h"
#include "seed/Threads.h"
#include "seed/Walls.h"

namespace collector {

using namespace qor_db;

namespace {

using Parameters = std::vector<Value>;

// Runs one prepared INSERT for row after row, up to the first failure.
class Insertion {
public:
    Insertion(IDatabaseConnection& database, std::u16string_view statement) {
        Outcome<std::unique_ptr<IQuery>> query = database.prepare(statement);
        if (query.ok()) {
            query_ = std::move(*query);
        } else {
            status_ = query.status();
        }
    }

    void add(const Parameters& row) {
        if (status_.ok()) status_ = query_->execute(row);
    }
    const Status& status() const { return status_; }

private:
    std::unique_ptr<IQuery> query_;
    Status status_;
};

// A limit that the source leaves open is null in the table.
Value openOr(double value) {
    return value == 0 ? Value() : Value(value);
}

// In hundredths of a millimetre, those above the sizes that are listed as such.
std::set<int> largeTapDrills() {
    std::set<int> sizes;
    const auto take = [&](std::span<const seed::Thread> threads) {
        for (const seed::Thread& thread : threads) {
            const int hundredths = static_cast<int>(std::lround(thread.tapDrill * 100));
            if (hundredths > std::rbegin(seed::kDrillRanges)->last) sizes.insert(hundredths);
        }
    };
    take(seed::kCoarseThreads);
    take(seed::kFineThreads);
    return sizes;
}

Status insertDrills(IDatabaseConnection& database) {
    Insertion rows(database,
                   u"INSERT INTO qor_drill_size (diameter, preferred, source) VALUES (?, ?, ?)");
    const auto add = [&](int hundredths, const char16_t* source) {
        // Divided, not multiplied: 4.2 is then the number that the text "4.2" means.
        rows.add({hundredths / 100.0, hundredths % seed::kPreferredDrillStep == 0 ? 1 : 0, source});
    };
    for (const int hundredths : seed::kSmallDrills)
        add(hundredths, seed::kDrillSource);
    for (const seed::DrillRange& range : seed::kDrillRanges) {
        for (int size = range.first; size <= range.last; size += range.step)
            add(size, seed::kDrillSource);
    }
    for (const int hundredths : largeTapDrills())
        add(hundredths, seed::kTapDrillSource);
    return rows.status();
}

Status insertThreads(IDatabaseConnection& database) {
    Insertion rows(
        database,
        u"INSERT INTO qor_thread (designation, series, nominal, pitch, tap_drill, source) "
        u"VALUES (?, ?, ?, ?, ?, ?)");
    for (const seed::Thread& thread : seed::kCoarseThreads) {
        CStringW designation;
        designation.Format(u"M%g", thread.nominal);
        rows.add({designation, u"coarse", thread.nominal, thread.pitch, thread.tapDrill,
                  seed::kCoarseSource});
    }
    for (const seed::Thread& thread : seed::kFineThreads) {
        CStringW designation;
        designation.Format(u"M%gx%g", thread.nominal, thread.pitch);
        rows.add({designation, u"fine", thread.nominal, thread.pitch, thread.tapDrill,
                  seed::kFineSource});
    }
    return rows.status();
}

Status insertClearanceHoles(IDatabaseConnection& database) {
    Insertion rows(database,
                   u"INSERT INTO qor_clearance_hole (nominal, fine, medium, coarse, source) "
                   u"VALUES (?, ?, ?, ?, ?)");
    for (const seed::Clearance& hole : seed::kClearanceHoles)
        rows.add({hole.nominal, hole.fine, hole.medium, hole.coarse, seed::kClearanceSource});
    return rows.status();
}

Status insertMaterials(IDatabaseConnection& database) {
    Insertion rows(database,
                   u"INSERT INTO qor_material (name, material_group, bend_group, density, "
                   u"youngs_modulus, yield_strength, tensile_strength, source) "
                   u"VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    for (const seed::MaterialFamily& family : seed::kMaterials) {
        for (const seed::MaterialRow& row : family.rows) {
            const double density = row.density != 0 ? row.density : family.density;
            rows.add({row.name, family.group, row.bendGroup, openOr(density),
                      openOr(family.youngsModulus), openOr(row.yield), openOr(row.tensile),
                      family.source});
        }
    }
    return rows.status();
}

Status insertBendRadii(IDatabaseConnection& database) {
    Insertion rows(database,
                   u"INSERT INTO qor_bend_radius (bend_group, thickness_over, thickness_to, "
                   u"direction, radius, radius_by_thickness, source) VALUES (?, ?, ?, ?, ?, ?, ?)");
    for (const seed::RadiusTable& table : seed::kRadiiInMillimetres) {
        for (std::size_t i = 0; i < std::size(seed::kFlangingThickness) - 1; ++i) {
            rows.add({table.bendGroup, seed::kFlangingThickness[i], seed::kFlangingThickness[i + 1],
                      table.direction, table.radius[i], Value(), seed::kFlangingSource});
        }
    }
    for (const seed::RadiusFactor& row : seed::kRadiiByThickness) {
        rows.add({row.bendGroup, row.over, row.upTo, u"any", Value(), row.factor, row.source});
    }
    return rows.status();
}

Status insertWalls(IDatabaseConnection& database) {
    Insertion rows(database,
                   u"INSERT INTO qor_minimum_wall (process, material, minimum, source) "
                   u"VALUES (?, ?, ?, ?)");
    for (const seed::Wall& wall : seed::kWalls)
        rows.add({wall.process, wall.material, wall.minimum, wall.source});
    return rows.status();
}

}  // namespace

Status insertSeed(IDatabaseConnection& database) {
    for (const auto insert : {insertDrills, insertThreads, insertClearanceHoles, insertMaterials,
                              insertBendRadii, insertWalls}) {
        Status status = insert(database);
        if (!status.ok()) return status;
    }
    return {};
}

}  // namespace collector
