#include "system/Modules.h"

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <memory>
#include <optional>

#include "system/Lasting.h"
#include "system/Paths.h"
#include "system/Unicode.h"
#include "system/posix/FileOperations.h"
#include "system/posix/ModuleFiles.h"

namespace corvane::system {
namespace {

// Null when it isn't loaded and won't load.
ModuleHandle openModule(const std::string& name) {
    return name.empty() ? nullptr : ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
}

// What the loader itself finds for a bare name.
ModuleHandle openBareName(std::u16string_view name) {
    for (const std::string& candidate : moduleFileNames(nativePath(name))) {
        if (const ModuleHandle module = openModule(candidate)) return module;
    }
    return nullptr;
}

// The file in the folder that the path names, or for a bare name in this library's own.
std::optional<std::string> fileInFolder(std::u16string_view path) {
    if (path.find(u'\0') != path.npos) return std::nullopt;
    const bool bare = lastSeparator(path) == path.npos;
    const std::u16string own = bare ? ownModuleFile() : std::u16string();
    const std::u16string_view folder = parentFolder(bare ? std::u16string_view(own) : path);
    return findModuleInFolder(nativePath(folder), nativePath(fileName(path)));
}

std::u16string fullPath(const char* path) {
    // The loader knows the program itself under no name.
    const char* name = *path ? path : "/proc/self/exe";
    const std::unique_ptr<char, void (*)(void*)> full(::realpath(name, nullptr), std::free);
    return fromUtf8(full ? full.get() : path);
}

}  // namespace

ModuleHandle loadModule(std::u16string_view path, std::u16string* fault) {
    if (const std::optional<std::string> file = fileInFolder(path)) {
        if (const std::optional<std::string> damage = moduleFileFault(*file)) {
            if (fault) *fault = fromUtf8(*damage);
            return nullptr;
        }
        const ModuleHandle module = openModule(*file);
        const char* said = module || !fault ? nullptr : ::dlerror();
        if (said) *fault = fromUtf8(said);
        return module;
    }
    return lastSeparator(path) == path.npos ? openBareName(path) : nullptr;
}

void freeModule(ModuleHandle module) {
    if (module) ::dlclose(module);
}

bool anyModuleFits(std::u16string_view folder, std::u16string_view pattern) {
    return anyModuleInFolderFits(nativePath(folder), toUtf8(pattern));
}

void* moduleSymbol(ModuleHandle module, const char* name) {
    return module ? ::dlsym(module, name) : nullptr;
}

std::u16string moduleFile(ModuleHandle module) {
    link_map* map = nullptr;
    if (!module || ::dlinfo(module, RTLD_DI_LINKMAP, &map) != 0) return {};
    return fullPath(map->l_name);
}

namespace {

std::u16string findOwnFile() {
    Dl_info info{};
    link_map* map = nullptr;
    const bool found = ::dladdr1(reinterpret_cast<void*>(&ownModuleFile), &info,
                                 reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0;
    return found && map ? fullPath(map->l_name) : std::u16string();
}

}  // namespace

std::u16string ownModuleFile() {
    // Asked once: the loader may know the file by a path relative to the folder that was current at
    // the start.
    static Lasting<std::u16string> file(findOwnFile());
    return file.get();
}

std::u16string installFolder() {
    const std::u16string file = ownModuleFile();
    return std::u16string(parentFolder(parentFolder(file)));
}

}  // namespace corvane::system
