// A component module whose classes fail each in a way of their own. The class is told by its first
// number; the objects count themselves.

#include <atomic>

#include <corvane/platform/Unknown.h>

#define TEST_EXPORT __attribute__((visibility("default")))

namespace {

constexpr HResult kClassNotAvailable = static_cast<HResult>(0x80040111);

enum Class : std::uint32_t {
    Working = 1,
    ModuleRefuses,
    ModuleGivesNull,
    FactoryRefuses,
    FactoryGivesNull
};

std::atomic<int> liveObjects = 0;

template <typename Interface>
class Counted : public Interface {
public:
    Counted() { ++liveObjects; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() { --liveObjects; }

    HResult QueryInterface(const Guid& id, void** object) override {
        const bool known =
            id == corvane::interfaceId<IUnknown> || id == corvane::interfaceId<Interface>;
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? corvane::kOk : corvane::kErrorNoInterface;
    }
    QorULong AddRef() override { return ++references_; }
    QorULong Release() override {
        const QorULong left = --references_;
        if (left == 0) delete this;
        return left;
    }

private:
    std::atomic<QorULong> references_ = 1;
};

class Factory : public Counted<IClassFactory> {
public:
    explicit Factory(std::uint32_t number) : number_(number) {}

    HResult CreateInstance(IUnknown*, const Guid& id, void** object) override {
        if (number_ == FactoryGivesNull) return corvane::kOk;
        if (number_ == FactoryRefuses) {
            *object = this;
            return corvane::kErrorOutOfMemory;
        }
        auto* made = new Counted<IUnknown>;
        const HResult status = made->QueryInterface(id, object);
        made->Release();
        return status;
    }
    HResult LockServer(int) override { return corvane::kOk; }

private:
    std::uint32_t number_;
};

}  // namespace

extern "C" TEST_EXPORT HResult DllGetClassObject(const Guid& classId, const Guid& interfaceId,
                                                 void** object) {
    if (classId.data1 == ModuleRefuses) return kClassNotAvailable;
    if (classId.data1 == ModuleGivesNull) return corvane::kOk;
    auto* factory = new Factory(classId.data1);
    const HResult status = factory->QueryInterface(interfaceId, object);
    factory->Release();
    return status;
}

extern "C" TEST_EXPORT int LiveObjects() {
    return liveObjects;
}
