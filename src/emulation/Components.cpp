#include "emulation/Components.h"

#include <map>
#include <mutex>

#include <corvane/platform/ComPtr.h>
#include <corvane/platform/ComponentRegistration.h>

#include "emulation/Registry.h"
#include "system/Lasting.h"
#include "system/Modules.h"

namespace corvane::emulation {

using namespace system;

namespace {

constexpr HResult kErrorInModule = static_cast<HResult>(0x800401F9);

thread_local int openPairs = 0;

// Component modules stay loaded until the process ends: an object may still run their code.
class LoadedModules {
public:
    ModuleHandle get(const std::u16string& path) {
        {
            const std::lock_guard lock(mutex_);
            const auto found = modules_.find(path);
            if (found != modules_.end()) return found->second;
        }
        // Not under the lock: what a module does while it is loaded may need components itself.
        const ModuleHandle module = loadModule(path);
        if (!module) return nullptr;
        const std::lock_guard lock(mutex_);
        if (!modules_.emplace(path, module).second) freeModule(module);
        return module;
    }

private:
    static inline std::mutex mutex_;
    std::map<std::u16string, ModuleHandle> modules_;
};

LoadedModules& loadedModules() {
    static Lasting<LoadedModules> modules;
    return modules.get();
}

std::optional<std::u16string> classesText(std::u16string_view path) {
    const std::optional<RegistryKey> key = RegistryKey::open(RegistryRoot::ClassesRoot, path);
    return key ? key->defaultText() : std::nullopt;
}

// The module that is registered for a class; empty without one.
std::u16string registeredModule(const Guid& classId) {
    return classesText(u"CLSID\\" + guidText(classId) + u"\\InprocServer32")
        .value_or(std::u16string());
}

HResult makeObject(const Guid& classId, const Guid& interfaceId, void** object) {
    const std::u16string path = registeredModule(classId);
    if (path.empty()) return kErrorClassNotRegistered;
    const ModuleHandle module = loadedModules().get(path);
    if (!module) return kErrorModuleNotFound;
    const auto getClassObject = moduleFunction<GetClassObjectFunction>(module, "DllGetClassObject");
    if (!getClassObject) return kErrorInModule;
    void* answer = nullptr;
    const HResult status = getClassObject(classId, corvane::interfaceId<IClassFactory>, &answer);
    if (failed(status)) return status;
    if (!answer) return kErrorUnexpected;
    ATL::CComPtr<IClassFactory> factory;
    factory.Attach(static_cast<IClassFactory*>(answer));
    return factory->CreateInstance(nullptr, interfaceId, object);
}

}  // namespace

ComponentRuntime::ComponentRuntime() {
    ++openPairs;
}

ComponentRuntime::~ComponentRuntime() {
    --openPairs;
}

int ComponentRuntime::depth() {
    return openPairs;
}

std::optional<Guid> classFromProgramId(std::u16string_view programId) {
    const std::optional<std::u16string> text =
        classesText(std::u16string(programId).append(u"\\CLSID"));
    return text ? guidFromText(*text) : std::nullopt;
}

HResult createInstance(const Guid& classId, const Guid& interfaceId, void** object) {
    if (!object) return kErrorPointer;
    *object = nullptr;
    HResult status = makeObject(classId, interfaceId, object);
    if (!failed(status) && !*object) status = kErrorUnexpected;
    if (failed(status)) *object = nullptr;
    return status;
}

}  // namespace corvane::emulation

namespace corvane {

ComponentRegistration FindComponent(std::u16string_view programId) {
    const std::optional<Guid> classId = emulation::classFromProgramId(programId);
    if (!classId) return {};
    return {emulation::guidText(*classId), emulation::registeredModule(*classId)};
}

}  // namespace corvane
