#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <corvane/platform/Unknown.h>

namespace scripthost {

/// What AddEngineFile answers besides kOk.
enum EngineStatus : HResult {
    kEngineKnown = kFalse,                                   ///< That engine is there already.
    kEngineNameBad = kErrorInvalidArgument,                  ///< The stem is no Lua name.
    kEngineMissing = kErrorModuleNotFound,                   ///< No module beside the library.
    kEngineBroken = static_cast<HResult>(0x800700C1),        ///< The module will not load.
    kEngineWithoutEntry = static_cast<HResult>(0x8007007F),  ///< It has no function luaopen_NAME.
    kEngineNameTaken = static_cast<HResult>(0x800700B7),     ///< Another global has the name.
    kEngineFailed = static_cast<HResult>(0x8007045A),        ///< It raised, or gave no table.
};

/// Where an engine's implementation is sought: beside its type library, under the same stem.
struct Engine {
    std::u16string folder;  ///< "." when the path names none.
    std::string name;       ///< The stem; a Lua name.

    /// Nothing when the stem of the path is no Lua name.
    static std::optional<Engine> fromLibrary(std::u16string_view path);

    std::u16string file(std::u16string_view ending) const;

    friend bool operator==(const Engine&, const Engine&) = default;
};

/// The bytes of a file of at most `most` bytes, or nothing.
std::optional<std::string> readFile(const std::u16string& path, std::uint64_t most);
bool isFile(const std::u16string& path);

}  // namespace scripthost
