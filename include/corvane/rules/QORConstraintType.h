#pragma once

#include <cstdint>

/// The type of a constraint. Rule modules may use more numbers; the library keeps them and gives
/// them no text.
enum QORConstraintType_e : std::int32_t {
    QORConstraint_Material = 1,  ///< "Material" in a rule file.
};
