#pragma once

#include <memory>

#include <corvane/base/Export.h>

namespace corvane {

namespace scriptrules {
class RuleIndexCache;
}

/// Keeps the index of user-defined rules in memory for as long as the scope lives, for a host that
/// makes many rules in a row.
///
/// Without a scope each ConcreteQORRule::PopulateScriptRule reads the index anew, so that N rules
/// read N entries N times. Within one, on the thread that began it, it is read once, and again only
/// when its file has changed: size, times and identity of the file are looked at for every rule. A
/// file that was written in the last two seconds is compared byte for byte, since its times prove
/// nothing yet. An entry is found by its name without a walk over the index. What a rule is given
/// stays the same, except that all rules are given the one element that is kept: a rule that
/// changes its element in PopulateParametersFromXML changes it for the next.
///
/// Scopes nest, and end in reverse order on the thread that began them; an inner one shares what
/// the outermost keeps.
class CORVANE_EXPORT RuleIndexScope {
public:
    RuleIndexScope();
    RuleIndexScope(const RuleIndexScope&) = delete;
    RuleIndexScope& operator=(const RuleIndexScope&) = delete;
    ~RuleIndexScope();

private:
    std::unique_ptr<scriptrules::RuleIndexCache> cache_;  // null in an inner scope
};

}  // namespace corvane
