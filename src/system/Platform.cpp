// What the public headers offer of this layer.

#include <utility>

#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>

#include "system/Modules.h"
#include "system/Process.h"

namespace corvane {

std::u16string GetEnvironmentText(std::u16string_view name) {
    return system::environmentVariable(name).value_or(std::u16string());
}

void SetEnvironmentText(std::u16string_view name, std::u16string_view value) {
    system::setEnvironmentVariable(name, value);
}

LoadedModule::LoadedModule(std::u16string_view path) {
    handle_ = system::loadModule(path, &fault_);
}

LoadedModule::LoadedModule(LoadedModule&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)), fault_(std::move(other.fault_)) {}

LoadedModule& LoadedModule::operator=(LoadedModule&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(fault_, other.fault_);
    return *this;
}

LoadedModule::~LoadedModule() {
    system::freeModule(handle_);
}

std::u16string LoadedModule::file() const {
    return system::moduleFile(handle_);
}

void* LoadedModule::symbol(const char* name) const {
    return system::moduleSymbol(handle_, name);
}

}  // namespace corvane
