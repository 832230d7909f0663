#include "Compile.h"

#include <algorithm>

#include "Run.h"

namespace scripthost {
namespace {

constexpr std::size_t kPiece = 512;
constexpr std::uint64_t kStepsForByte = 8;

struct Source {
    std::string_view prefix;
    std::string_view text;
};

const char* read(lua_State* lua, void* data, std::size_t* size) {
    auto& source = *static_cast<Source*>(data);
    return takePiece(lua, source.prefix.empty() ? source.text : source.prefix, size);
}

}  // namespace

const char* takePiece(lua_State* lua, std::string_view& text, std::size_t* size) {
    *size = std::min(text.size(), kPiece);
    if (*size == 0) return nullptr;
    spend(lua, 1 + *size * kStepsForByte);
    const char* piece = text.data();
    text.remove_prefix(*size);
    return piece;
}

int compileText(lua_State* lua, std::string_view text, const char* chunk, std::string_view prefix) {
    Source source{prefix, text};
    return lua_load(lua, read, &source, chunk, "t");
}

}  // namespace scripthost
