#pragma once

#include <string>
#include <string_view>

namespace corvane::system {

/// Handle of a loaded module; null for none.
using ModuleHandle = void*;

/// Loads a shared module by the name that the interface gives it, with or without a folder:
/// "QORDatabaseu.dll" is this platform's module of that stem, found whatever its case; on POSIX
/// "QORDatabaseu.so" or "libQORDatabaseu.so". A bare name is looked for in the folder of this
/// library, then where the system's loader looks. Null when there is none or it won't load. Each
/// successful load is paired with one freeModule. `fault` gets why a file that is there won't
/// load: what the loader says, or that the file is cut off.
ModuleHandle loadModule(std::u16string_view path, std::u16string* fault = nullptr);
void freeModule(ModuleHandle module);

/// True when `folder` has a module whose name, as loadModule takes it, fits `pattern`, where "*"
/// stands for any run of units and "?" for one: "Creo*u.dll" is found by "Creo4u.so" or
/// "libcreo4u.so".
bool anyModuleFits(std::u16string_view folder, std::u16string_view pattern);

/// An exported function or object of a module by its case-sensitive name, or null. A null module
/// has none.
void* moduleSymbol(ModuleHandle module, const char* name);
template <typename Function>
Function moduleFunction(ModuleHandle module, const char* name) {
    return reinterpret_cast<Function>(moduleSymbol(module, name));
}

/// The full path of a loaded module's file; empty for null.
std::u16string moduleFile(ModuleHandle module);

/// The full path of the file that holds this library's code, as the loader knows it.
std::u16string ownModuleFile();

/// The folder above the one that holds this library: the install folder.
std::u16string installFolder();

}  // namespace corvane::system
