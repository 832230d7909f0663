#include "db/Lookups.h"

#include "Command.h"
#include "Table.h"
#include "db/Actions.h"
#include "language/Messages.h"

using qor_db::Outcome;

namespace {

struct Field {
    Message name;
    CStringW text;
};
using Fields = std::vector<Field>;

CStringW measured(double value, const char16_t* unit) {
    CStringW text;
    text.Format(u"%.10g %s", value, unit);
    return text;
}

/// A limit that the source leaves open is 0.
CStringW limit(double value, const char16_t* unit) {
    return value == 0 ? CStringW(u"-") : measured(value, unit);
}

Fields fieldsOf(const qor_db::DrillSize& drill) {
    return {{"Drill", measured(drill.diameter, u"mm")},
            {"Preferred", drill.preferred ? tr("yes") : tr("no")},
            {"Source", drill.source}};
}

Fields fieldsOf(const qor_db::ThreadHole& thread) {
    return {{"Thread", thread.designation},
            {"Series", thread.series},
            {"Nominal", measured(thread.nominal, u"mm")},
            {"Pitch", measured(thread.pitch, u"mm")},
            {"Tap drill", measured(thread.tapDrill, u"mm")},
            {"Source", thread.source}};
}

Fields fieldsOf(const qor_db::ClearanceHole& hole) {
    return {{"Bolt", measured(hole.nominal, u"mm")},
            {"Hole", measured(hole.diameter, u"mm")},
            {"Source", hole.source}};
}

Fields fieldsOf(const qor_db::Material& material) {
    return {{"Material", material.name},
            {"Group", material.group},
            {"Bends as", material.bendGroup.IsEmpty() ? CStringW(u"-") : material.bendGroup},
            {"Density", limit(material.density, u"kg/m3")},
            {"Modulus", limit(material.youngsModulus, u"GPa")},
            {"Yield", limit(material.yieldStrength, u"MPa")},
            {"Tensile", limit(material.tensileStrength, u"MPa")},
            {"Source", material.source}};
}

Fields fieldsOf(const qor_db::BendRadius& bend) {
    return {{"Bends as", bend.bendGroup},
            {"Thickness", measured(bend.thickness, u"mm")},
            {"Radius", measured(bend.radius, u"mm")},
            {"Source", bend.source}};
}

Fields fieldsOf(const qor_db::WallThickness& wall) {
    return {{"Process", wall.process},
            {"Material", wall.material},
            {"Least wall", measured(wall.minimum, u"mm")},
            {"Source", wall.source}};
}

template <typename Entry>
int printTable(const Outcome<std::vector<Entry>>& entries, Console& console) {
    if (!entries.ok()) return reportStatus(entries.status(), console);
    std::vector<CStringW> names;
    for (const Field& field : fieldsOf(Entry()))
        names.push_back(tr(field.name));
    Table table(std::move(names));
    for (const Entry& entry : *entries) {
        const Fields fields = fieldsOf(entry);
        Table::Row row;
        for (std::size_t i = 0; i + 1 < fields.size(); ++i)
            row.cells.push_back(fields[i].text);
        row.lines.push_back(fields.back().text);
        table.add(std::move(row));
    }
    table.print(console);
    return kGood;
}

template <typename Entry>
int printFields(const Outcome<Entry>& entry, Console& console) {
    if (!entry.ok()) return reportStatus(entry.status(), console);
    for (const Field& field : fieldsOf(*entry))
        console.writeField(tr(field.name), field.text);
    return kGood;
}

}  // namespace

int printRows(const Outcome<std::vector<qor_db::DrillSize>>& drills, Console& console) {
    return printTable(drills, console);
}
int printRows(const Outcome<std::vector<qor_db::ThreadHole>>& threads, Console& console) {
    return printTable(threads, console);
}
int printRows(const Outcome<std::vector<qor_db::Material>>& materials, Console& console) {
    return printTable(materials, console);
}
int printRows(const Outcome<std::vector<qor_db::WallThickness>>& walls, Console& console) {
    return printTable(walls, console);
}

int printRow(const Outcome<qor_db::DrillSize>& drill, Console& console) {
    return printFields(drill, console);
}
int printRow(const Outcome<qor_db::ThreadHole>& thread, Console& console) {
    return printFields(thread, console);
}
int printRow(const Outcome<qor_db::ClearanceHole>& hole, Console& console) {
    return printFields(hole, console);
}
int printRow(const Outcome<qor_db::Material>& material, Console& console) {
    return printFields(material, console);
}
int printRow(const Outcome<qor_db::BendRadius>& bend, Console& console) {
    return printFields(bend, console);
}
int printRow(const Outcome<qor_db::WallThickness>& wall, Console& console) {
    return printFields(wall, console);
}
