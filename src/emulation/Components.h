#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <corvane/platform/Guid.h>
#include <corvane/platform/Unknown.h>

namespace corvane::emulation {

/// Enters the calling thread into the component runtime and leaves it again; pairs nest.
class ComponentRuntime {
public:
    ComponentRuntime();
    ~ComponentRuntime();
    ComponentRuntime(const ComponentRuntime&) = delete;
    ComponentRuntime& operator=(const ComponentRuntime&) = delete;

    /// How many pairs the calling thread has open.
    static int depth();
};

/// "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}": upper case, with braces.
std::u16string guidText(const Guid& guid);

/// The GUID of a text in exactly that form, in either case; nothing for any other text.
std::optional<Guid> guidFromText(std::u16string_view text);

/// The class registered for a program identifier ("ProgID\CLSID" below the classes root), or
/// nothing.
std::optional<Guid> classFromProgramId(std::u16string_view programId);

/// Makes an object of a registered class: looks up "CLSID\{...}\InprocServer32", loads that module
/// once for the life of the process, asks its export DllGetClassObject for the class factory and
/// that for the object. The caller owns one reference to `*object`; on failure it is null and the
/// status negative: 0x80040154 for a class that is not registered, 0x8007007E for a module that
/// won't load, 0x800401F9 for one without that export, 0x8000FFFF for a success without an object,
/// else what module or factory answered. Safe on any thread as far as the component is.
HResult createInstance(const Guid& classId, const Guid& interfaceId, void** object);

}  // namespace corvane::emulation
