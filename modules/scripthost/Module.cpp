// What the component look-up asks of this module: the class factory of the script host.

#include <new>

#include <corvane/base/ModuleExport.h>

#include "ScriptProcessor.h"

namespace {

/// {5B0E6A0D-93C4-4F1B-8F57-2E4C1D7A96B3}; machine.reg names it too.
constexpr Guid kClassId{
    0x5B0E6A0D, 0x93C4, 0x4F1B, {0x8F, 0x57, 0x2E, 0x4C, 0x1D, 0x7A, 0x96, 0xB3}};
constexpr HResult kErrorNoAggregation = static_cast<HResult>(0x80040110);
constexpr HResult kErrorClassNotAvailable = static_cast<HResult>(0x80040111);

/// One for the life of the module, so its references are not counted.
class Factory final : public IClassFactory {
public:
    virtual ~Factory() = default;  // after the slots of the interface

    HResult QueryInterface(const Guid& interfaceId, void** object) override {
        if (!object) return corvane::kErrorPointer;
        *object = nullptr;
        if (interfaceId != corvane::interfaceId<IUnknown> &&
            interfaceId != corvane::interfaceId<IClassFactory>)
            return corvane::kErrorNoInterface;
        *object = static_cast<IClassFactory*>(this);
        return corvane::kOk;
    }
    QorULong AddRef() override { return 2; }
    QorULong Release() override { return 1; }

    HResult CreateInstance(IUnknown* outer, const Guid& interfaceId, void** object) override {
        if (!object) return corvane::kErrorPointer;
        *object = nullptr;
        if (outer) return kErrorNoAggregation;
        try {
            scripthost::ScriptProcessor* processor = scripthost::ScriptProcessor::create();
            if (!processor) return corvane::kErrorOutOfMemory;
            const HResult status = processor->QueryInterface(interfaceId, object);
            processor->Release();
            return status;
        } catch (const std::bad_alloc&) {
            return corvane::kErrorOutOfMemory;
        }
    }
    HResult LockServer(int) override { return corvane::kOk; }
};

Factory factory;

}  // namespace

CORVANE_MODULE_EXPORT HResult DllGetClassObject(const Guid& classId, const Guid& interfaceId,
                                                void** object) {
    if (!object) return corvane::kErrorPointer;
    *object = nullptr;
    if (classId != kClassId) return kErrorClassNotAvailable;
    return factory.QueryInterface(interfaceId, object);
}
