#pragma once

#include <cstddef>
#include <utility>

#include <corvane/base/SharedType.h>
#include <corvane/platform/Unknown.h>

namespace ATL {

/// A counted handle of a component's interface, with the size of one pointer.
///
/// It holds one reference of its own: it calls AddRef on what it is given and Release when it lets
/// go. A handle that holds null calls nothing. A new interface is counted before the old one is
/// released, and assigning the interface that it holds already does nothing.
template <typename T>
class CORVANE_SHARED_TYPE CComPtr {
public:
    CComPtr() = default;
    CComPtr(std::nullptr_t) noexcept {}  ///< Null.
    /// Takes a reference of its own; the caller keeps the one that it has.
    CComPtr(T* object) noexcept : p(object) {
        if (p) p->AddRef();
    }
    CComPtr(const CComPtr& source) noexcept : CComPtr(source.p) {}
    CComPtr(CComPtr&& source) noexcept : p(source.Detach()) {}
    ~CComPtr() { Release(); }

    /// Takes a reference of its own to another interface.
    CComPtr& operator=(T* object) noexcept {
        if (p != object) CComPtr(object).Swap(*this);
        return *this;
    }
    CComPtr& operator=(const CComPtr& source) noexcept {
        if (this != &source) *this = source.p;
        return *this;
    }
    /// Moving the handle of the same interface gives up the source's reference.
    CComPtr& operator=(CComPtr&& source) noexcept {
        CComPtr(std::move(source)).Swap(*this);
        return *this;
    }

    void Swap(CComPtr& other) noexcept { std::swap(p, other.p); }  ///< Exchanges what the two hold.

    /// Lets go of the interface. The handle is null before the object hears of it.
    void Release() noexcept {
        if (T* const object = Detach()) object->Release();
    }

    /// Takes over the caller's reference and releases what it held.
    void Attach(T* object) noexcept {
        if (T* const old = std::exchange(p, object)) old->Release();
    }

    /// Hands its reference to the caller and is null.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(p, nullptr); }

    /// Gives `*object` the interface with one more reference, which the caller releases; null where
    /// the handle holds null. kErrorPointer when `object` is null.
    HResult CopyTo(T** object) const noexcept {
        if (!object) return corvane::kErrorPointer;
        *object = CComPtr(*this).Detach();
        return corvane::kOk;
    }

    /// Another interface of the object, by its corvane::interfaceId. What `other` held is released;
    /// kErrorPointer when this handle holds null.
    template <typename Other>
    HResult QueryInterface(CComPtr<Other>& other) const {
        void* found = nullptr;
        const HResult status = p ? p->QueryInterface(corvane::interfaceId<Other>, &found)
                                 : HResult{corvane::kErrorPointer};
        other.Attach(static_cast<Other*>(corvane::failed(status) ? nullptr : found));
        return status;
    }

    /// Where a function puts an interface with a reference for the caller. What the handle held is
    /// released first, so that nothing leaks.
    T** operator&() noexcept {
        Release();
        return &p;
    }

    ///@{
    /// The interface, which stays the handle's.
    operator T*() const noexcept { return p; }
    T* operator->() const noexcept { return p; }
    T& operator*() const noexcept { return *p; }
    ///@}
    bool operator!() const noexcept { return !p; }  ///< True when it holds null.

    T* p = nullptr;  ///< The interface, or null.
};

}  // namespace ATL
