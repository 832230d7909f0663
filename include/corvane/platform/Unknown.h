#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Platform.h>

// Components: IUnknown, IDispatch, IClassFactory, BSTR and HResult are those of Platform.h.

namespace corvane {

// These are not global, because a dialog has a kOk of its own, with another value.

///@{
/// A status that this library gives and looks for, with its value of the first platform.
inline constexpr HResult kOk = 0;
inline constexpr HResult kFalse = 1;
inline constexpr HResult kErrorNotImplemented = static_cast<HResult>(0x80004001);
inline constexpr HResult kErrorNoInterface = static_cast<HResult>(0x80004002);
inline constexpr HResult kErrorPointer = static_cast<HResult>(0x80004003);
inline constexpr HResult kErrorFail = static_cast<HResult>(0x80004005);
inline constexpr HResult kErrorUnexpected = static_cast<HResult>(0x8000FFFF);
inline constexpr HResult kErrorNoSuchProgramId = static_cast<HResult>(0x800401F3);
inline constexpr HResult kErrorClassNotRegistered = static_cast<HResult>(0x80040154);
inline constexpr HResult kErrorModuleNotFound = static_cast<HResult>(0x8007007E);
inline constexpr HResult kErrorOutOfMemory = static_cast<HResult>(0x8007000E);
inline constexpr HResult kErrorInvalidArgument = static_cast<HResult>(0x80070057);
///@}

/// Statuses that are not negative, such as kFalse, are successes.
[[nodiscard]] constexpr bool failed(HResult status) {
    return status < 0;
}

}  // namespace corvane

/// The signature of the export "DllGetClassObject" of a component module.
using GetClassObjectFunction = HResult (*)(const Guid& classId, const Guid& interfaceId,
                                           void** object);

namespace corvane {

///@{
/// The identifier of an interface: its `kInterfaceId`, or that of the three roots, which have none.
template <typename Interface>
inline constexpr Guid interfaceId = Interface::kInterfaceId;
template <>
inline constexpr Guid interfaceId<IUnknown>{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
template <>
inline constexpr Guid interfaceId<IDispatch>{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
template <>
inline constexpr Guid interfaceId<IClassFactory>{1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
///@}

/// A copy of the text up to its first zero unit, which SysFreeString frees; null when memory is
/// short for it.
inline BSTR systemText(std::u16string_view text) {
    return SysAllocString(std::basic_string<OLECHAR>(text.begin(), text.end()).c_str());
}

/// The units of such a text; empty for null.
inline std::u16string textOf(BSTR text) {
    return text ? std::u16string(text, text + SysStringLen(text)) : std::u16string();
}

}  // namespace corvane
