#pragma once

namespace corvane::rules {

/// Tells the user that a rule or a constraint holds a parameter of illegal kind.
void reportIllegalParameter();

}  // namespace corvane::rules
