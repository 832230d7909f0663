#pragma once

// All that differs between the platforms in the public headers: the types of the component runtime
// and of windows, which Windows has itself, and two marks for the compiler. Each is written so
// that code for one platform compiles on the others.

#include <array>
#include <compare>
#include <cstdint>

#include <corvane/base/Export.h>
#include <corvane/base/ExportMarks.h>
#include <corvane/base/Types.h>

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <oaidl.h>
#include <oleauto.h>
#include <unknwn.h>
#include <windows.h>

#define CORVANE_MODULE_EXPORT extern "C" CORVANE_EXPORTED
#define CORVANE_SHARED_TYPE

using Guid = GUID;
using HResult = HRESULT;

struct CPoint : POINT {
    friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};

#else

/// Marks a function that a module offers by its plain name to the program that loads it.
#define CORVANE_MODULE_EXPORT extern "C" CORVANE_EXPORTED

/// Marks a class that is defined in a header alone and is still the same type in every
/// module: what the library exports may have it as a template argument.
#define CORVANE_SHARED_TYPE __attribute__((visibility("default")))

/// A 16-byte identifier of a class, an interface or a type library, laid out as in memory on its
/// first platform.
struct Guid {
    std::uint32_t data1 = 0;              ///< The first group of eight digits.
    std::uint16_t data2 = 0;              ///< The second group, of four.
    std::uint16_t data3 = 0;              ///< The third group, of four.
    std::array<std::uint8_t, 8> data4{};  ///< The rest, byte by byte.

    friend bool operator==(const Guid&, const Guid&) = default;
};

static_assert(sizeof(Guid) == 16);

/// 32-bit status of a component call; negative for a failure. Its constants are in namespace
/// corvane.
using HResult = std::int32_t;

/// The root of every component interface: counted references and the way from one interface to
/// another. Its three operations are the first three slots of every table, so the order is fixed;
/// it has no virtual destructor.
class CORVANE_SHARED_TYPE IUnknown {
public:
    /// Gives another interface of the same object with one more reference, or null and
    /// corvane::kErrorNoInterface.
    virtual HResult QueryInterface(const Guid& interfaceId, void** object) = 0;
    virtual QorULong AddRef() = 0;   ///< One more reference; gives their number.
    virtual QorULong Release() = 0;  ///< One less; the last one ends the object.

protected:
    ~IUnknown() = default;
};

struct ITypeInfo;
struct DISPPARAMS;
struct VARIANT;
struct EXCEPINFO;

/// One unit of a component's text.
using OLECHAR = char16_t;

/// An interface whose operations can also be called by name. The library calls none of the four;
/// they keep the slots of the interfaces that derive from it in place, and their types are opaque.
class CORVANE_SHARED_TYPE IDispatch : public IUnknown {
public:
    ///@{
    /// The four operations of the interface, not called here.
    virtual HResult GetTypeInfoCount(unsigned* count) = 0;
    virtual HResult GetTypeInfo(unsigned index, QorULong locale, ITypeInfo** typeInfo) = 0;
    virtual HResult GetIDsOfNames(const Guid& reserved, OLECHAR** names, unsigned count,
                                  QorULong locale, QorLong* ids) = 0;
    virtual HResult Invoke(QorLong id, const Guid& reserved, QorULong locale, std::uint16_t flags,
                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                           unsigned* argumentError) = 0;
    ///@}

protected:
    ~IDispatch() = default;
};

/// Makes objects of one class; what a component module's export DllGetClassObject hands out.
class IClassFactory : public IUnknown {
public:
    /// `outer` is null: aggregation is refused. The caller owns one reference to `*object`.
    virtual HResult CreateInstance(IUnknown* outer, const Guid& interfaceId, void** object) = 0;
    virtual HResult LockServer(int lock) = 0;  ///< Keeps the module loaded while it is locked.

protected:
    ~IClassFactory() = default;
};

/// Counted 16-bit text that one component allocates and another frees: zero-terminated, with its
/// length before it. corvane::systemText and corvane::textOf (Unknown.h) make and read it on every
/// platform.
using BSTR = OLECHAR*;

/// Copies zero-terminated text; null gives null, and so does an exhausted heap. The caller frees it
/// with SysFreeString.
CORVANE_EXPORT BSTR SysAllocString(const OLECHAR* text);
/// Frees such a text; null does nothing.
CORVANE_EXPORT void SysFreeString(BSTR text);
/// The length in code units; 0 for null.
CORVANE_EXPORT std::uint32_t SysStringLen(BSTR text);

/// A place on the screen or in a window, in pixels.
struct CPoint {
    int x = 0;  ///< To the right.
    int y = 0;  ///< Down.

    friend bool operator==(const CPoint&, const CPoint&) = default;
};

class CWnd;

/// A message on its way to a window. What `wParam` and `lParam` mean depends on the number.
struct MSG {
    CWnd* hwnd = nullptr;       ///< Null means the dialog that runs.
    unsigned message = 0;       ///< Its number.
    std::uintptr_t wParam = 0;  ///< First value.
    std::intptr_t lParam = 0;   ///< Second value.
};

#endif
