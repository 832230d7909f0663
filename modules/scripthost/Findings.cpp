#include "Findings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>

#include <corvane/host/Finding.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/host/RunContext.h>

#include "Run.h"

namespace scripthost {
namespace {

using corvane::Finding;
using corvane::Place;
using corvane::Point;

constexpr const char* kDraftType = "corvane.finding";
constexpr const char* kNotMet = "the rule is not met";

/// A finding while it is read. It is an object of Lua, which ends it when reading raises. What it
/// holds counts as memory of the script, and goes on counting once the host keeps it.
struct Draft {
    explicit Draft(Limits& budget) : limits(budget) {}
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() { limits.giveBack(held); }

    Finding finding;
    Limits& limits;
    std::uint64_t held = 0;
};

/// Ends a draft, once: Lua closes it, and collects it later.
int endDraft(lua_State* lua) {
    auto** slot = static_cast<Draft**>(lua_touserdata(lua, 1));
    delete *slot;
    *slot = nullptr;
    return 0;
}

Draft& newDraft(lua_State* lua) {
    auto** slot = static_cast<Draft**>(lua_newuserdatauv(lua, sizeof(Draft*), 0));
    *slot = nullptr;
    luaL_setmetatable(lua, kDraftType);
    lua_toclose(lua, -1);
    *slot = new (std::nothrow) Draft(runOf(lua).limits);
    if (!*slot) luaL_error(lua, "not enough memory");
    return **slot;
}

/// Takes room of the script's memory, then changes the draft.
template <typename Change>
void add(lua_State* lua, Draft& draft, std::size_t bytes, Change change) {
    spendBytes(lua, bytes);
    if (!draft.limits.hold(bytes)) raiseLimit(lua);
    draft.held += bytes;
    bool done = true;
    try {
        change();
    } catch (...) {
        done = false;
    }
    if (!done) luaL_error(lua, "not enough memory");
}

void takeText(lua_State* lua, Draft& draft, const char* field, CStringW& to) {
    if (lua_type(lua, -1) != LUA_TSTRING)
        luaL_error(lua, "'%s' of a finding is a text, not a %s", field, luaL_typename(lua, -1));
    std::size_t size = 0;
    const char* text = lua_tolstring(lua, -1, &size);
    add(lua, draft, 2 * size, [&] { to = CStringW::FromUtf8({text, size}); });
}

double checkNumber(lua_State* lua, const char* what) {
    const double value = lua_tonumber(lua, -1);
    if (lua_type(lua, -1) != LUA_TNUMBER || !std::isfinite(value)) luaL_error(lua, "%s", what);
    return value;
}

/// The table at the top of the stack has no other fields with a name than these.
void checkFields(lua_State* lua, const char* what, std::initializer_list<const char*> known) {
    lua_pushnil(lua);
    while (lua_next(lua, -2)) {
        lua_pop(lua, 1);
        if (lua_type(lua, -1) != LUA_TSTRING) continue;
        const char* name = lua_tostring(lua, -1);
        const bool isKnown = std::any_of(known.begin(), known.end(), [name](const char* field) {
            return std::strcmp(field, name) == 0;
        });
        if (!isKnown) luaL_error(lua, "%s has no field '%s'", what, name);
    }
}

/// Takes {x, y, z}, or a table with these fields, off the stack.
Point takePoint(lua_State* lua) {
    constexpr const char* kWrong = "a point is three numbers {x, y, z}";
    constexpr const char* kNames[] = {"x", "y", "z"};
    if (!lua_istable(lua, -1)) luaL_error(lua, "%s", kWrong);
    const bool isList = lua_getfield(lua, -1, "x") == LUA_TNIL;
    if (isList && luaL_len(lua, -2) != 3) luaL_error(lua, "%s", kWrong);
    lua_pop(lua, 1);
    double values[3];
    for (int i = 0; i < 3; ++i) {
        if (isList) {
            lua_geti(lua, -1, i + 1);
        } else {
            lua_getfield(lua, -1, kNames[i]);
        }
        values[i] = checkNumber(lua, kWrong);
        lua_pop(lua, 1);
    }
    lua_pop(lua, 1);
    return {values[0], values[1], values[2]};
}

/// Takes a list off the stack: calls `take` with each of its elements at the top.
template <typename Take>
lua_Integer takeList(lua_State* lua, const char* wrong, Take take) {
    if (!lua_istable(lua, -1)) luaL_error(lua, "%s", wrong);
    const lua_Integer length = luaL_len(lua, -1);
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_geti(lua, -1, i);
        take();
    }
    lua_pop(lua, 1);
    return length;
}

lua_Integer takePoints(lua_State* lua, Draft& draft, Place& place, const char* wrong) {
    return takeList(lua, wrong, [&] {
        const Point point = takePoint(lua);
        add(lua, draft, sizeof(Point), [&] { place.points.push_back(point); });
    });
}

void takeBox(lua_State* lua, Draft& draft, Place& place) {
    constexpr const char* kWrong = "a box is two points";
    if (takePoints(lua, draft, place, kWrong) != 2) luaL_error(lua, "%s", kWrong);
    const Point a = place.points[0];
    const Point b = place.points[1];
    place.points[0] = {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
    place.points[1] = {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

void takePolyline(lua_State* lua, Draft& draft, Place& place) {
    constexpr const char* kWrong = "a polyline is a list of two points or more";
    if (takePoints(lua, draft, place, kWrong) < 2) luaL_error(lua, "%s", kWrong);
}

void takeFacets(lua_State* lua, Draft& draft, Place& place) {
    constexpr const char* kWrong = "facets are a list of triangles of three points";
    const lua_Integer count = takeList(lua, kWrong, [&] {
        if (takePoints(lua, draft, place, kWrong) != 3) luaL_error(lua, "%s", kWrong);
    });
    if (count == 0) luaL_error(lua, "%s", kWrong);
}

void takeFaces(lua_State* lua, Draft& draft, Place& place) {
    constexpr const char* kWrong = "faces are a list of numbers from 1";
    const lua_Integer count = takeList(lua, kWrong, [&] {
        int isWhole = 0;
        const lua_Integer number = lua_tointegerx(lua, -1, &isWhole);
        if (!isWhole || lua_type(lua, -1) != LUA_TNUMBER || number < 1 || number > INT32_MAX)
            luaL_error(lua, "%s", kWrong);
        lua_pop(lua, 1);
        add(lua, draft, sizeof(QorLong),
            [&] { place.faces.push_back(static_cast<QorLong>(number)); });
    });
    if (count == 0) luaL_error(lua, "%s", kWrong);
}

void takeOnePoint(lua_State* lua, Draft& draft, Place& place) {
    const Point point = takePoint(lua);
    add(lua, draft, sizeof(Point), [&] { place.points.push_back(point); });
}

/// The fields of a place, of which it has one; faces may have their facets beside them.
const struct {
    const char* field;
    Place::Kind kind;
    void (*take)(lua_State*, Draft&, Place&);
} kForms[] = {
    {"point", Place::Kind::Point, takeOnePoint},       {"box", Place::Kind::Box, takeBox},
    {"polyline", Place::Kind::Polyline, takePolyline}, {"facets", Place::Kind::Facets, takeFacets},
    {"faces", Place::Kind::Faces, takeFaces},
};

/// Takes a place with a named form off the stack.
void takeForm(lua_State* lua, Draft& draft, Place& place) {
    checkFields(lua, "a place", {"point", "box", "polyline", "facets", "faces", "label"});
    int count = 0;
    bool hasFacets = false;
    for (const auto& [field, kind, take] : kForms) {
        if (lua_getfield(lua, -1, field) == LUA_TNIL) {
            lua_pop(lua, 1);
            continue;
        }
        take(lua, draft, place);
        if (!(kind == Place::Kind::Faces && hasFacets)) ++count;
        hasFacets = kind == Place::Kind::Facets;
        place.kind = kind;
    }
    if (count != 1)
        luaL_error(lua,
                   "a place is a point {x, y, z}, or has one of the fields point, box, "
                   "polyline, facets and faces");
    if (lua_getfield(lua, -1, "label") != LUA_TNIL) takeText(lua, draft, "label", place.label);
    lua_pop(lua, 2);
}

/// True when the table at the top of the stack has something under this key.
template <typename Key>
bool hasOf(lua_State* lua, Key key, int type) {
    int found = LUA_TNIL;
    if constexpr (std::is_same_v<Key, int>) {
        found = lua_geti(lua, -1, key);
    } else {
        found = lua_getfield(lua, -1, key);
    }
    lua_pop(lua, 1);
    return found == type;
}

void takePlace(lua_State* lua, Draft& draft) {
    luaL_checkstack(lua, 10, nullptr);
    if (!lua_istable(lua, -1))
        luaL_error(lua, "a place is a table, not a %s", luaL_typename(lua, -1));
    add(lua, draft, sizeof(Place), [&] { draft.finding.places.emplace_back(); });
    Place& place = draft.finding.places.back();
    const bool isPoint = hasOf(lua, 1, LUA_TNUMBER) || hasOf(lua, "x", LUA_TNUMBER);
    (isPoint ? takeOnePoint : takeForm)(lua, draft, place);
}

/// True for an empty list at the top of the stack; a read-only one has its elements elsewhere.
bool isEmpty(lua_State* lua) {
    if (!hasOf(lua, 1, LUA_TNIL)) return false;
    lua_pushnil(lua);
    if (!lua_next(lua, -2)) return true;
    lua_pop(lua, 2);
    return false;
}

/// Takes one place or a list of places off the stack.
void takePlaces(lua_State* lua, Draft& draft) {
    if (lua_istable(lua, -1)) {
        if (hasOf(lua, 1, LUA_TTABLE)) {
            takeList(lua, "", [&] { takePlace(lua, draft); });
            return;
        }
        if (isEmpty(lua)) {
            lua_pop(lua, 1);
            return;
        }
    }
    takePlace(lua, draft);
}

void readMeasure(lua_State* lua, int index, const char* field, std::optional<double>& to) {
    if (lua_getfield(lua, index, field) != LUA_TNIL) {
        const char* wrong = lua_pushfstring(lua, "'%s' of a finding is a finite number", field);
        lua_insert(lua, -2);
        to = checkNumber(lua, wrong);
        lua_pop(lua, 1);
    }
    lua_pop(lua, 1);
}

void readText(lua_State* lua, int index, const char* field, Draft& draft, CStringW& to) {
    if (lua_getfield(lua, index, field) != LUA_TNIL) takeText(lua, draft, field, to);
    lua_pop(lua, 1);
}

/// Reads the text or the table at `index`, which is not relative.
void readFinding(lua_State* lua, int index, Draft& draft) {
    Finding& finding = draft.finding;
    add(lua, draft, sizeof(Finding), [] {});
    if (lua_type(lua, index) == LUA_TSTRING) {
        lua_pushvalue(lua, index);
        takeText(lua, draft, "message", finding.message);
        lua_pop(lua, 1);
        return;
    }
    lua_pushvalue(lua, index);
    checkFields(lua, "a finding", {"message", "measured", "limit", "unit", "at", "fingerprint"});
    lua_pop(lua, 1);
    if (lua_getfield(lua, index, "message") == LUA_TNIL)
        luaL_error(lua, "a finding needs a 'message'");
    takeText(lua, draft, "message", finding.message);
    lua_pop(lua, 1);
    readMeasure(lua, index, "measured", finding.measured);
    readMeasure(lua, index, "limit", finding.limit);
    readText(lua, index, "unit", draft, finding.unit);
    readText(lua, index, "fingerprint", draft, finding.fingerprint);
    if (lua_getfield(lua, index, "at") == LUA_TNIL) {
        lua_pop(lua, 1);
    } else {
        takePlaces(lua, draft);
    }
}

/// Gives the finding to the host, and notes it in the run.
bool deliver(Run& run, Draft& draft, int line) noexcept {
    try {
        const Finding& finding = draft.finding;
        if (!finding.isNote && run.findings++ == 0) {
            run.findingLine = line;
            run.findingMessage = finding.message.ToUtf8();
        }
        const corvane::RunContext* context = corvane::CurrentRunContext();
        if (!context || !context->results) return true;
        context->results->ReportFinding(finding);
        draft.held = 0;  // the host keeps it
        return true;
    } catch (...) {
        return false;
    }
}

void deliverOrRaise(lua_State* lua, Draft& draft, int line) {
    if (!deliver(runOf(lua), draft, line)) luaL_error(lua, "the host could not take the finding");
}

int report(lua_State* lua, bool isNote) {
    checkStack(lua);
    const int type = lua_type(lua, 1);
    luaL_argexpected(lua, type == LUA_TTABLE || type == LUA_TSTRING, 1, "table or text");
    lua_settop(lua, 1);
    Draft& draft = newDraft(lua);
    readFinding(lua, 1, draft);
    draft.finding.isNote = isNote;
    deliverOrRaise(lua, draft, scriptLine(lua));
    return 0;
}

int reportFinding(lua_State* lua) {
    return report(lua, false);
}

int reportNote(lua_State* lua) {
    return report(lua, true);
}

constexpr luaL_Reg kFunctions[] = {
    {"finding", reportFinding}, {"note", reportNote}, {nullptr, nullptr}};

}  // namespace

int openResult(lua_State* lua) {
    luaL_newmetatable(lua, kDraftType);
    for (const char* event : {"__gc", "__close"}) {
        lua_pushcfunction(lua, endDraft);
        lua_setfield(lua, -2, event);
    }
    luaL_newlib(lua, kFunctions);
    lua_setglobal(lua, "result");
    return 0;
}

int reportReason(lua_State* lua) {
    Run& run = runOf(lua);
    lua_settop(lua, 1);
    const bool describesItself = luaL_getmetafield(lua, 1, "__tostring") != LUA_TNIL;
    const int type = lua_type(lua, 1);
    if (type == LUA_TNIL) {
        if (run.findings > 0) return 0;
        lua_pushstring(lua, kNotMet);
        lua_replace(lua, 1);
    } else if (describesItself || type == LUA_TNUMBER) {
        luaL_tolstring(lua, 1, nullptr);
        lua_replace(lua, 1);
    } else if (type != LUA_TSTRING && type != LUA_TTABLE) {
        luaL_error(lua, "the reason is a text or a table, not a %s", luaL_typename(lua, 1));
    }
    lua_settop(lua, 1);
    Draft& draft = newDraft(lua);
    readFinding(lua, 1, draft);
    deliverOrRaise(lua, draft, run.returnLine);
    return 0;
}

}  // namespace scripthost
