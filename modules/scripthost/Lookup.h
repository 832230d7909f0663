#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace scripthost {

/// What a look-up in the rule database gave, before it becomes a table of Lua.
struct Lookup {
    using Field = std::pair<const char*, std::variant<double, bool, std::string>>;
    using Record = std::vector<Field>;

    enum class State { Found, NotFound, Failed };

    State state = State::Failed;
    std::string message;  ///< Why there is nothing.
    std::vector<Record> records;
};

}  // namespace scripthost
