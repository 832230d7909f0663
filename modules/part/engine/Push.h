#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>
#include <vector>

#include <corvane/part/Features.h>
#include <corvane/part/Part.h>
#include <corvane/part/Walls.h>

// Plain values as Lua sees them. A push leaves one value on the stack and may raise an error of
// Lua, which jumps over the frames between: none of them holds an object with a destructor.
namespace partengine {

void push(lua_State* lua, double value);  ///< nil for what is no number or not there
void push(lua_State* lua, int value);
void push(lua_State* lua, bool value);
void push(lua_State* lua, const char* text);
void push(lua_State* lua, const std::string& text);  ///< nil for an empty one
void push(lua_State* lua, const corvane::part::Vector& vector);

void push(lua_State* lua, const corvane::part::Box& box);
void push(lua_State* lua, const corvane::part::OrientedBox& box);
void push(lua_State* lua, const corvane::part::Solid& solid);
void push(lua_State* lua, const corvane::part::Face& face);
void push(lua_State* lua, const corvane::part::Edge& edge);
void push(lua_State* lua, const corvane::part::Thread& thread);
void push(lua_State* lua, const corvane::part::Damage& damage);
/// nil where nothing was measured.
void push(lua_State* lua, const corvane::part::Thickness& thickness);
void push(lua_State* lua, const corvane::part::Walls& walls);
void push(lua_State* lua, const corvane::part::HoleSection& section);
void push(lua_State* lua, const corvane::part::Hole& hole);
void push(lua_State* lua, const corvane::part::HolePattern& pattern);
void push(lua_State* lua, const corvane::part::Fillet& fillet);
void push(lua_State* lua, const corvane::part::SharpCorner& corner);
void push(lua_State* lua, const corvane::part::Pocket& pocket);
void push(lua_State* lua, const corvane::part::TurnedSection& section);
void push(lua_State* lua, const corvane::part::Groove& groove);
void push(lua_State* lua, const corvane::part::Turned& turned);
void push(lua_State* lua, const corvane::part::Bend& bend);
void push(lua_State* lua, const corvane::part::SheetHole& hole);
void push(lua_State* lua, const corvane::part::SheetMetal& sheet);
void push(lua_State* lua, const corvane::part::Gaps& gaps);
void push(lua_State* lua, const corvane::part::FaceDraft& draft);
void push(lua_State* lua, const corvane::part::Undercut& undercut);
void push(lua_State* lua, const corvane::part::Draft& draft);
void push(lua_State* lua, const corvane::part::Overhang& overhang);

template <typename T>
void push(lua_State* lua, const std::vector<T>& list) {
    luaL_checkstack(lua, 8, nullptr);
    lua_createtable(lua, static_cast<int>(list.size()), 0);
    for (std::size_t i = 0; i < list.size(); ++i) {
        push(lua, list[i]);
        lua_rawseti(lua, -2, static_cast<lua_Integer>(i) + 1);
    }
}

/// What does not apply where it is 0: nothing then.
double unlessZero(double value);
bool isNull(const corvane::part::Vector& vector);

/// A record under construction at the top of the stack.
class Record {
public:
    explicit Record(lua_State* lua) : lua_(lua) {
        luaL_checkstack(lua, 8, nullptr);
        lua_newtable(lua);
    }

    /// Sets a field; a value that is not there leaves it out.
    template <typename T>
    const Record& operator()(const char* name, const T& value) const {
        push(lua_, value);
        lua_setfield(lua_, -2, name);
        return *this;
    }

private:
    lua_State* lua_;
};

}  // namespace partengine
