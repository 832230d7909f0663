// What the host asks the module for.

#include <string_view>

#include <corvane/base/ModuleExport.h>
#include <corvane/host/RuleModule.h>

#include "EnvelopeRule.h"
#include "MassRule.h"
#include "WallRule.h"

CORVANE_MODULE_EXPORT CQorRule* CreateQorRule(const char16_t* ruleName) {
    const std::u16string_view name = ruleName;
    if (name == u"Maximum envelope") return new partrules::EnvelopeRule;
    if (name == u"Maximum mass") return new partrules::MassRule;
    if (name == u"Minimum wall") return new partrules::WallRule;
    return nullptr;
}
