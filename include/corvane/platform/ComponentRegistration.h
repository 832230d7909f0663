#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Export.h>
#include <corvane/platform/Guid.h>

namespace corvane {

/// What the registry says of a component.
struct ComponentRegistration {
    /// The class of the program identifier, with braces; empty when the identifier is not
    /// registered or holds no class.
    std::u16string classId;
    /// The class's module as registered; empty when the class is not.
    std::u16string module;
};

/// Looks a program identifier up, such as "QorScriptHost.ScriptProcessor".
CORVANE_EXPORT ComponentRegistration FindComponent(std::u16string_view programId);

/// The text of an identifier, in the usual groups of upper-case hexadecimal digits with braces:
/// "{C48CD337-1FE4-4A73-B59A-BC6D746DA082}".
CORVANE_EXPORT std::u16string GuidText(const Guid& guid);

}  // namespace corvane
