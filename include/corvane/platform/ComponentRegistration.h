#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Export.h>

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

}  // namespace corvane
