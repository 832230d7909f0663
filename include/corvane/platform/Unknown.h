#pragma once

#include <cstdint>

#include <corvane/base/Export.h>
#include <corvane/base/SharedType.h>
#include <corvane/base/Types.h>
#include <corvane/platform/Guid.h>

/// 32-bit status of a component call; negative for a failure. Its constants are in namespace
/// corvane.
using HResult = std::int32_t;

namespace corvane {

// The statuses that this library gives and looks for, with the values of the first platform. They
// are not global, because a dialog has a kOk of its own, with another value.

inline constexpr HResult kOk = 0;
inline constexpr HResult kFalse = 1;
inline constexpr HResult kErrorNotImplemented = static_cast<HResult>(0x80004001);
inline constexpr HResult kErrorNoInterface = static_cast<HResult>(0x80004002);
inline constexpr HResult kErrorPointer = static_cast<HResult>(0x80004003);
inline constexpr HResult kErrorFail = static_cast<HResult>(0x80004005);
inline constexpr HResult kErrorUnexpected = static_cast<HResult>(0x8000FFFF);
/// A program identifier that is not registered.
inline constexpr HResult kErrorNoSuchProgramId = static_cast<HResult>(0x800401F3);
inline constexpr HResult kErrorClassNotRegistered = static_cast<HResult>(0x80040154);
inline constexpr HResult kErrorModuleNotFound = static_cast<HResult>(0x8007007E);
inline constexpr HResult kErrorOutOfMemory = static_cast<HResult>(0x8007000E);
inline constexpr HResult kErrorInvalidArgument = static_cast<HResult>(0x80070057);

/// Statuses that are not negative, such as kFalse, are successes.
[[nodiscard]] constexpr bool failed(HResult status) {
    return status < 0;
}

}  // namespace corvane

/// The root of every component interface: counted references and the way from one interface to
/// another. Its three operations are the first three slots of every table, so the order is fixed;
/// it has no virtual destructor.
class CORVANE_SHARED_TYPE IUnknown {
public:
    /// {00000000-0000-0000-C000-000000000046}
    static constexpr Guid kInterfaceId{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

    /// Gives another interface of the same object with one more reference, or null and
    /// corvane::kErrorNoInterface.
    virtual HResult QueryInterface(const Guid& interfaceId, void** object) = 0;
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;

protected:
    ~IUnknown() = default;
};

/// An interface whose operations can also be called by name. The library calls none of the four;
/// they keep the slots of the interfaces that derive from it in place.
class CORVANE_SHARED_TYPE IDispatch : public IUnknown {
public:
    /// {00020400-0000-0000-C000-000000000046}
    static constexpr Guid kInterfaceId{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

    virtual HResult GetTypeInfoCount(std::uint32_t* count) = 0;
    virtual HResult GetTypeInfo(std::uint32_t index, std::uint32_t locale, void** typeInfo) = 0;
    virtual HResult GetIDsOfNames(const Guid& reserved, char16_t** names, std::uint32_t count,
                                  std::uint32_t locale, std::int32_t* ids) = 0;
    virtual HResult Invoke(std::int32_t id, const Guid& reserved, std::uint32_t locale,
                           std::uint16_t flags, void* parameters, void* result, void* exception,
                           std::uint32_t* argumentError) = 0;

protected:
    ~IDispatch() = default;
};

/// Makes objects of one class; what a component module's export DllGetClassObject hands out.
class IClassFactory : public IUnknown {
public:
    /// {00000001-0000-0000-C000-000000000046}
    static constexpr Guid kInterfaceId{1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

    /// `outer` is null: aggregation is refused. The caller owns one reference to `*object`.
    virtual HResult CreateInstance(IUnknown* outer, const Guid& interfaceId, void** object) = 0;
    virtual HResult LockServer(std::int32_t lock) = 0;

protected:
    ~IClassFactory() = default;
};

/// The signature of the export "DllGetClassObject" of a component module.
using GetClassObjectFunction = HResult (*)(const Guid& classId, const Guid& interfaceId,
                                           void** object);

/// Counted 16-bit text that one component allocates and another frees: zero-terminated, with its
/// length before it.
using BSTR = char16_t*;

/// Copies zero-terminated text; null gives null, and so does an exhausted heap. The caller frees it
/// with SysFreeString.
CORVANE_EXPORT BSTR SysAllocString(const char16_t* text);
/// Frees such a text; null does nothing.
CORVANE_EXPORT void SysFreeString(BSTR text);
/// The length in code units; 0 for null.
CORVANE_EXPORT std::uint32_t SysStringLen(BSTR text);
