#include "emulation/Components.h"

#include <array>
#include <cstdint>
#include <map>
#include <mutex>

#include <corvane/platform/ComError.h>
#include <corvane/platform/ComPtr.h>
#include <corvane/platform/ComponentRegistration.h>

#include "emulation/Registry.h"
#include "system/Lasting.h"
#include "system/Modules.h"
#include "system/TextLines.h"

namespace corvane::emulation {

using namespace system;

namespace {

// A digit for every X; the digits of the first three groups are numbers, the others single bytes.
constexpr std::u16string_view kForm = u"{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
constexpr std::size_t kBytes = sizeof(Guid);

std::array<std::uint8_t, kBytes> bytesOf(const Guid& guid) {
    std::array<std::uint8_t, kBytes> bytes{};
    const std::uint64_t head =
        std::uint64_t{guid.data1} << 32 | std::uint64_t{guid.data2} << 16 | guid.data3;
    for (std::size_t i = 0; i < 8; ++i) {
        bytes[i] = static_cast<std::uint8_t>(head >> (56 - 8 * i));
        bytes[8 + i] = guid.data4[i];
    }
    return bytes;
}

}  // namespace

std::u16string guidText(const Guid& guid) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    const std::array<std::uint8_t, kBytes> bytes = bytesOf(guid);
    std::u16string text(kForm);
    std::size_t digit = 0;
    for (char16_t& unit : text) {
        if (unit != u'X') continue;
        const unsigned byte = bytes[digit / 2];
        unit = kDigits[digit % 2 == 0 ? byte >> 4 : byte & 0xF];
        ++digit;
    }
    return text;
}

std::optional<Guid> guidFromText(std::u16string_view text) {
    if (text.size() != kForm.size()) return std::nullopt;
    std::uint64_t halves[2] = {};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] != u'X') {
            if (text[i] != kForm[i]) return std::nullopt;
            continue;
        }
        const int digit = hexDigit(text[i]);
        if (digit < 0) return std::nullopt;
        std::uint64_t& half = halves[digits++ / kBytes];
        half = half << 4 | static_cast<unsigned>(digit);
    }
    Guid guid{static_cast<std::uint32_t>(halves[0] >> 32),
              static_cast<std::uint16_t>(halves[0] >> 16 & 0xFFFF),
              static_cast<std::uint16_t>(halves[0] & 0xFFFF),
              {}};
    for (std::size_t i = 0; i < guid.data4.size(); ++i)
        guid.data4[i] = static_cast<std::uint8_t>(halves[1] >> (56 - 8 * i));
    return guid;
}

namespace {

constexpr HResult kErrorInModule = static_cast<HResult>(0x800401F9);

thread_local int openPairs = 0;

// Component modules stay loaded until the process ends: an object may still run their code.
class LoadedModules {
public:
    struct Module {
        ModuleHandle handle = nullptr;                    // null for one that does not load
        GetClassObjectFunction getClassObject = nullptr;  // null in one without that export
    };

    Module get(const std::u16string& path) {
        {
            const std::lock_guard lock(mutex_);
            const auto found = modules_.find(path);
            if (found != modules_.end()) return found->second;
        }
        // Not under the lock: what a module does while it is loaded may need components itself.
        Module module{loadModule(path)};
        if (!module.handle) return module;
        module.getClassObject =
            moduleFunction<GetClassObjectFunction>(module.handle, "DllGetClassObject");
        const std::lock_guard lock(mutex_);
        if (!modules_.emplace(path, module).second) freeModule(module.handle);
        return module;
    }

private:
    static inline std::mutex mutex_;
    std::map<std::u16string, Module> modules_;
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
    const LoadedModules::Module module = loadedModules().get(path);
    if (!module.handle) return kErrorModuleNotFound;
    if (!module.getClassObject) return kErrorInModule;
    void* answer = nullptr;
    const HResult status =
        module.getClassObject(classId, corvane::interfaceId<IClassFactory>, &answer);
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

std::u16string GuidText(const Guid& guid) {
    return emulation::guidText(guid);
}

}  // namespace corvane

// Defined here so that its type is one and the same in every module that throws or catches it.
_com_error::~_com_error() = default;
