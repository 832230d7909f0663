#include "Schema.h"

#include <array>

#include "Seed.h"
#include "Statements.h"
#include "common/Guard.h"

namespace collector {

using namespace qor_db;
using qor_db::driver::failure;
using qor_db::driver::guarded;

namespace {

// The statements keep to what SQLite and the dialects of servers have in common. Lengths are in mm.
constexpr const char16_t* kTables[] = {
    u"CREATE TABLE qor_drill_size (diameter FLOAT NOT NULL PRIMARY KEY, "
    u"preferred INTEGER NOT NULL, source NVARCHAR(200) NOT NULL)",

    u"CREATE TABLE qor_thread (designation NVARCHAR(40) NOT NULL PRIMARY KEY, "
    u"series NVARCHAR(20) NOT NULL, nominal FLOAT NOT NULL, pitch FLOAT NOT NULL, "
    u"tap_drill FLOAT NOT NULL, source NVARCHAR(200) NOT NULL)",

    u"CREATE TABLE qor_clearance_hole (nominal FLOAT NOT NULL PRIMARY KEY, fine FLOAT NOT NULL, "
    u"medium FLOAT NOT NULL, coarse FLOAT NOT NULL, source NVARCHAR(200) NOT NULL)",

    u"CREATE TABLE qor_material (name NVARCHAR(80) NOT NULL PRIMARY KEY, "
    u"material_group NVARCHAR(40) NOT NULL, bend_group NVARCHAR(80), density FLOAT, "
    u"youngs_modulus FLOAT, yield_strength FLOAT, tensile_strength FLOAT, "
    u"source NVARCHAR(200) NOT NULL)",

    // A radius in mm, or as a multiple of the thickness, for thicknesses above one and up to
    // another bound; direction is "across", "along" or "any".
    u"CREATE TABLE qor_bend_radius (bend_group NVARCHAR(80) NOT NULL, "
    u"thickness_over FLOAT NOT NULL, thickness_to FLOAT NOT NULL, direction NVARCHAR(10) NOT NULL, "
    u"radius FLOAT, radius_by_thickness FLOAT, source NVARCHAR(200) NOT NULL, "
    u"PRIMARY KEY (bend_group, thickness_over, direction))",

    u"CREATE TABLE qor_minimum_wall (process NVARCHAR(80) NOT NULL, material NVARCHAR(80) NOT "
    u"NULL, "
    u"minimum FLOAT NOT NULL, source NVARCHAR(200) NOT NULL, PRIMARY KEY (process, material))",

    u"CREATE INDEX qor_thread_nominal ON qor_thread (nominal)",
};

Status makeTables(IDatabaseConnection& database) {
    for (const char16_t* statement : kTables) {
        Status status = executeOnce(database, statement, {});
        if (!status.ok()) return status;
    }
    return {};
}

// Step i leads from version i to version i + 1. Steps are only ever added: databases of every
// version are in use.
constexpr std::array<Status (*)(IDatabaseConnection&), kSchemaVersion> kSteps = {
    makeTables,
    insertSeed,
};

// One step inside an open transaction. Another process may have been faster, so the version is
// looked up again. `done` becomes true when there is nothing left to do.
Status takeStep(IDatabaseConnection& database, bool& done) {
    const Outcome<int> version = database.schemaVersion();
    if (!version.ok()) return version.status();
    done = *version >= kSchemaVersion;
    if (done) return {};
    if (*version < 0)
        return failure(ErrorCode::Damaged, u"The version of the reference tables is negative.");
    Status status = kSteps[static_cast<std::size_t>(*version)](database);
    if (status.ok()) status = database.setSchemaVersion(*version + 1);
    return status;
}

}  // namespace

Status upgradeSchema(IDatabaseConnection& database) {
    for (bool done = false; !done;) {
        Status status = database.begin();
        if (!status.ok()) return status;
        status = guarded([&] { return takeStep(database, done); });
        if (status.ok()) status = database.commit();
        if (!status.ok()) {
            static_cast<void>(database.rollback());
            return status;
        }
    }
    return {};
}

}  // namespace collector
