#include <corvane/dfx/Value.h>

namespace {

using Counted = dfx::Value<ATL::CComPtr<IUnknown>, dfx::IValue::TYPE_IUNKNOWN>;
using Borrowed = dfx::Value<IUnknown*, dfx::IValue::TYPE_IUNKNOWN>;

struct Component : IUnknown {
    HResult QueryInterface(const Guid& id, void** object) override {
        *object = id == corvane::interfaceId<IUnknown> ? this : nullptr;
        if (*object) AddRef();
        return *object ? corvane::kOk : corvane::kErrorNoInterface;
    }
    QorULong AddRef() override { return ++references; }
    QorULong Release() override { return --references; }

    QorULong references = 0;
};

}  // namespace

int main() {
    Component component;
    bool right = true;
    {
        ATL::CComPtr<IUnknown> handle(&component);
        const Counted counted(1, handle);
        const Borrowed borrowed(2, handle);
        // The handle and the counted value hold a reference each, the borrowed one none.
        right = component.references == 2;

        ATL::CComPtr<IUnknown> other;
        right = right && handle.QueryInterface(other) == corvane::kOk && other == borrowed.get();
    }
    return right && component.references == 0 ? 0 : 1;
}
