#include "DatabaseTable.h"

#include <string_view>

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/host/RunContext.h>

#include "Run.h"

namespace scripthost {
namespace {

using namespace qor_db;

/// What one look-up costs, so that no script can keep a database busy for ever.
constexpr std::uint64_t kStepsForLookup = 1000;

// The fields of each row. Texts that are empty, and limits of a material that its source leaves
// open, are left out: nil in a script.

class RecordWriter {
public:
    explicit RecordWriter(Lookup::Record& record) : record_(record) {}

    RecordWriter& text(const char* name, const CStringW& value) {
        if (!value.IsEmpty()) record_.emplace_back(name, value.ToUtf8());
        return *this;
    }
    RecordWriter& number(const char* name, double value) {
        record_.emplace_back(name, value);
        return *this;
    }
    RecordWriter& known(const char* name, double value) {
        return value != 0 ? number(name, value) : *this;
    }
    RecordWriter& flag(const char* name, bool value) {
        record_.emplace_back(name, value);
        return *this;
    }

private:
    Lookup::Record& record_;
};

void write(RecordWriter to, const DrillSize& row) {
    to.number("diameter", row.diameter).flag("preferred", row.preferred).text("source", row.source);
}
void write(RecordWriter to, const ThreadHole& row) {
    to.text("designation", row.designation)
        .text("series", row.series)
        .number("nominal", row.nominal)
        .number("pitch", row.pitch)
        .number("tap_drill", row.tapDrill)
        .text("source", row.source);
}
void write(RecordWriter to, const ClearanceHole& row) {
    to.number("nominal", row.nominal).number("diameter", row.diameter).text("source", row.source);
}
void write(RecordWriter to, const Material& row) {
    to.text("name", row.name)
        .text("group", row.group)
        .text("bend_group", row.bendGroup)
        .known("density", row.density)
        .known("youngs_modulus", row.youngsModulus)
        .known("yield_strength", row.yieldStrength)
        .known("tensile_strength", row.tensileStrength)
        .text("source", row.source);
}
void write(RecordWriter to, const BendRadius& row) {
    to.text("bend_group", row.bendGroup)
        .number("thickness", row.thickness)
        .number("radius", row.radius)
        .text("source", row.source);
}
void write(RecordWriter to, const WallThickness& row) {
    to.text("process", row.process)
        .text("material", row.material)
        .number("minimum", row.minimum)
        .text("source", row.source);
}

template <typename Row>
void take(Lookup& lookup, const Row& row) {
    write(RecordWriter(lookup.records.emplace_back()), row);
}
template <typename Row>
void take(Lookup& lookup, const std::vector<Row>& rows) {
    for (const Row& row : rows)
        take(lookup, row);
}

/// Asks the database of the context. What comes back is kept in `lookup`.
template <typename Ask>
void askInto(Lookup& lookup, Ask ask) noexcept {
    lookup.state = Lookup::State::Failed;
    lookup.message.clear();
    lookup.records.clear();
    const corvane::RunContext* context = corvane::CurrentRunContext();
    try {
        if (!context || !context->database) {
            lookup.message = "this run has no rule database";
            return;
        }
        const auto outcome = ask(context->database->reference());
        if (outcome.ok()) {
            take(lookup, *outcome);
            lookup.state = Lookup::State::Found;
        } else {
            if (outcome.status().code == ErrorCode::NotFound)
                lookup.state = Lookup::State::NotFound;
            lookup.message = outcome.status().message.ToUtf8();
        }
    } catch (...) {
        lookup.state = Lookup::State::Failed;
    }
}

void pushRecord(lua_State* lua, const Lookup::Record& record) {
    lua_createtable(lua, 0, static_cast<int>(record.size()));
    for (const auto& [name, value] : record) {
        if (const double* number = std::get_if<double>(&value)) {
            lua_pushnumber(lua, *number);
        } else if (const bool* flag = std::get_if<bool>(&value)) {
            lua_pushboolean(lua, *flag);
        } else {
            const std::string& text = *std::get_if<std::string>(&value);
            lua_pushlstring(lua, text.data(), text.size());
        }
        lua_setfield(lua, -2, name);
    }
}

/// Answers a call: with a row, with nil and a message when there is no such row, or, when
/// `isList`, with a list of rows.
template <typename Ask>
int answer(lua_State* lua, bool isList, Ask ask) {
    spend(lua, kStepsForLookup);
    Lookup& lookup = runOf(lua).lookup;
    askInto(lookup, ask);
    if (lookup.state == Lookup::State::Failed)
        return luaL_error(lua, "%s",
                          lookup.message.empty() ? "the look-up failed" : lookup.message.c_str());
    if (lookup.state == Lookup::State::NotFound) {
        lua_pushnil(lua);
        lua_pushlstring(lua, lookup.message.data(), lookup.message.size());
        return 2;
    }
    if (!isList) {
        pushRecord(lua, lookup.records.front());
        return 1;
    }
    lua_createtable(lua, static_cast<int>(lookup.records.size()), 0);
    lua_Integer index = 0;
    for (const Lookup::Record& record : lookup.records) {
        pushRecord(lua, record);
        lua_rawseti(lua, -2, ++index);
    }
    return 1;
}

std::string_view checkText(lua_State* lua, int index) {
    std::size_t size = 0;
    const char* text = luaL_checklstring(lua, index, &size);
    return {text, size};
}

CStringW wide(std::string_view text) {
    return CStringW::FromUtf8(text);
}

int drillSizes(lua_State* lua) {
    const bool preferred = lua_toboolean(lua, 1) != 0;
    return answer(lua, true, [=](IReferenceData& data) { return data.drillSizes(preferred); });
}

int nearestDrill(lua_State* lua) {
    const double diameter = luaL_checknumber(lua, 1);
    const bool preferred = lua_toboolean(lua, 2) != 0;
    return answer(lua, false,
                  [=](IReferenceData& data) { return data.nearestDrill(diameter, preferred); });
}

int thread(lua_State* lua) {
    const std::string_view name = checkText(lua, 1);
    return answer(lua, false, [=](IReferenceData& data) { return data.thread(wide(name)); });
}

int threads(lua_State* lua) {
    const double nominal = luaL_checknumber(lua, 1);
    return answer(lua, true, [=](IReferenceData& data) { return data.threads(nominal); });
}

int clearanceHole(lua_State* lua) {
    static constexpr const char* kFits[] = {"fine", "medium", "coarse", nullptr};
    const double nominal = luaL_checknumber(lua, 1);
    const auto fit = static_cast<ClearanceFit>(luaL_checkoption(lua, 2, "medium", kFits));
    return answer(lua, false,
                  [=](IReferenceData& data) { return data.clearanceHole(nominal, fit); });
}

int materials(lua_State* lua) {
    return answer(lua, true, [](IReferenceData& data) { return data.materials(); });
}

int material(lua_State* lua) {
    const std::string_view name = checkText(lua, 1);
    return answer(lua, false, [=](IReferenceData& data) { return data.material(wide(name)); });
}

int bendRadius(lua_State* lua) {
    static constexpr const char* kDirections[] = {"across", "along", nullptr};
    const std::string_view name = checkText(lua, 1);
    const double thickness = luaL_checknumber(lua, 2);
    const auto direction =
        static_cast<BendDirection>(luaL_checkoption(lua, 3, "along", kDirections));
    return answer(lua, false, [=](IReferenceData& data) {
        return data.bendRadius(wide(name), thickness, direction);
    });
}

int minimumWall(lua_State* lua) {
    const std::string_view process = checkText(lua, 1);
    const std::string_view name = lua_isnoneornil(lua, 2) ? "any" : checkText(lua, 2);
    return answer(lua, false, [=](IReferenceData& data) {
        return data.minimumWall(wide(process), wide(name));
    });
}

int minimumWalls(lua_State* lua) {
    return answer(lua, true, [](IReferenceData& data) { return data.minimumWalls(); });
}

constexpr luaL_Reg kFunctions[] = {{"drill_sizes", drillSizes},
                                   {"nearest_drill", nearestDrill},
                                   {"thread", thread},
                                   {"threads", threads},
                                   {"clearance_hole", clearanceHole},
                                   {"materials", materials},
                                   {"material", material},
                                   {"bend_radius", bendRadius},
                                   {"minimum_wall", minimumWall},
                                   {"minimum_walls", minimumWalls},
                                   {nullptr, nullptr}};

}  // namespace

void openDatabase(lua_State* lua) {
    luaL_newlib(lua, kFunctions);
    lua_setglobal(lua, "db");
}

}  // namespace scripthost
