#include "Lookups.h"

#include <cmath>
#include <optional>
#include <utility>

#include "common/Guard.h"

namespace collector {

using namespace qor_db;
using qor_db::driver::failure;

namespace {

// In the order of the enumerators. Names are compared in lower case, which reads the whole table; a
// name as written is found by the primary key. Lengths that are looked up by equality are
// given as a narrow range, since they often come out of a calculation.
constexpr const char16_t* kStatements[] = {
    u"SELECT diameter, preferred, source FROM qor_drill_size WHERE preferred >= ? "
    u"ORDER BY diameter",

    u"SELECT diameter, preferred, source FROM qor_drill_size WHERE preferred >= ? "
    u"AND ABS(diameter - ?) <= (SELECT MIN(ABS(diameter - ?)) FROM qor_drill_size "
    u"WHERE preferred >= ?) + 0.0000001 ORDER BY diameter",

    u"SELECT designation, series, nominal, pitch, tap_drill, source FROM qor_thread "
    u"WHERE LOWER(designation) = ?",

    u"SELECT designation, series, nominal, pitch, tap_drill, source FROM qor_thread "
    u"WHERE designation = ?",

    u"SELECT designation, series, nominal, pitch, tap_drill, source FROM qor_thread "
    u"WHERE nominal BETWEEN ? AND ? ORDER BY pitch DESC",

    u"SELECT nominal, fine, medium, coarse, source FROM qor_clearance_hole "
    u"WHERE nominal BETWEEN ? AND ?",

    u"SELECT name, material_group, bend_group, density, youngs_modulus, yield_strength, "
    u"tensile_strength, source FROM qor_material ORDER BY name",

    u"SELECT name, material_group, bend_group, density, youngs_modulus, yield_strength, "
    u"tensile_strength, source FROM qor_material WHERE LOWER(name) = ?",

    u"SELECT name, material_group, bend_group, density, youngs_modulus, yield_strength, "
    u"tensile_strength, source FROM qor_material WHERE name = ?",

    u"SELECT bend_group, radius, radius_by_thickness, source FROM qor_bend_radius "
    u"WHERE thickness_over < ? AND thickness_to >= ? AND (direction = ? OR direction = 'any') "
    u"AND (LOWER(bend_group) = ? OR bend_group IN "
    u"(SELECT bend_group FROM qor_material WHERE LOWER(name) = ?)) "
    u"ORDER BY CASE direction WHEN 'any' THEN 1 ELSE 0 END",

    u"SELECT process, material, minimum, source FROM qor_minimum_wall "
    u"WHERE LOWER(process) = ? AND (LOWER(material) = ? OR material = 'any') "
    u"ORDER BY CASE material WHEN 'any' THEN 1 ELSE 0 END",

    u"SELECT process, material, minimum, source FROM qor_minimum_wall ORDER BY process, material",
};
static_assert(std::size(kStatements) == static_cast<std::size_t>(Lookup::Count));

constexpr auto& readNumber = Lookups::readNumber;

bool readOpenNumber(const Row& row, std::size_t column, double& number) {
    return row[column].isNull() || readNumber(row, column, number);
}

}  // namespace

bool read(const Row& row, DrillSize& item) {
    item.preferred = row.integer(1).value_or(0) != 0;
    item.source = row.text(2);
    return readNumber(row, 0, item.diameter);
}

bool read(const Row& row, ThreadHole& item) {
    item.designation = row.text(0);
    item.series = row.text(1);
    item.source = row.text(5);
    return readNumber(row, 2, item.nominal) && readNumber(row, 3, item.pitch) &&
           readNumber(row, 4, item.tapDrill);
}

bool read(const Row& row, Material& item) {
    item.name = row.text(0);
    item.group = row.text(1);
    item.bendGroup = row.text(2);
    item.source = row.text(7);
    return readOpenNumber(row, 3, item.density) && readOpenNumber(row, 4, item.youngsModulus) &&
           readOpenNumber(row, 5, item.yieldStrength) &&
           readOpenNumber(row, 6, item.tensileStrength);
}

bool read(const Row& row, WallThickness& item) {
    item.process = row.text(0);
    item.material = row.text(1);
    item.source = row.text(3);
    return readNumber(row, 2, item.minimum);
}

bool read(const Row& row, Row& item) {
    item = row;
    return true;
}

bool Lookups::readNumber(const Row& row, std::size_t column, double& number) {
    const std::optional<double> value = row.number(column);
    if (value && std::isfinite(*value)) number = *value;
    return value && std::isfinite(*value);
}

Status Lookups::noNumber(const Row& row) {
    CStringW values;
    for (std::size_t column = 0; column < row.size(); ++column) {
        if (column > 0) values += u", ";
        if (const std::optional<double> number = row.number(column)) {
            CStringW text;
            text.Format(u"%g", *number);
            values += text;
        } else {
            values += row[column].isNull() ? CStringW(u"NULL") : row.text(column);
        }
    }
    return failure(ErrorCode::BadRow,
                   u"A row of the reference data has no number where it needs one: " + values);
}

Status Lookups::notOpen() noexcept {
    return driver::failureOf(ErrorCode::NotOpen, "The database is not open.");
}

void Lookups::connect(IDatabaseConnection* database, Status reason) {
    for (std::unique_ptr<IQuery>& query : queries_)
        query.reset();
    database_ = database;
    reason_ = std::move(reason);
}

Status Lookups::notFound(const CStringW& name) {
    return failure(ErrorCode::NotFound, u"The reference data hold nothing for " + name + u".");
}

Status Lookups::run(Lookup lookup, const std::vector<Value>& parameters, IQuery*& query) {
    if (!database_) return reason_;
    const auto index = static_cast<std::size_t>(lookup);
    std::unique_ptr<IQuery>& kept = queries_[index];
    if (!kept) {
        Outcome<std::unique_ptr<IQuery>> made = database_->prepare(kStatements[index]);
        if (!made.ok()) return made.status();
        kept = std::move(*made);
    }
    query = kept.get();
    Status status = query->execute(parameters);
    // A statement that has failed is made anew the next time: its connection may have changed.
    if (!status.ok()) kept.reset();
    return status;
}

}  // namespace collector
